#include "data/guess/drawn_texts.h"

#include <algorithm>
#include <set>

#include "base/ascii.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestDrawn = 5;
constexpr std::size_t kFewestShapes = 3;

bool IsDrawn(std::string_view line) {
  const std::string_view number = line.substr(0, line.find_first_of(" \t|*"));
  const std::string_view rest = line.substr(number.size());
  return ParseNumber(number).has_value() && rest.find_first_not_of("|.*+:- \t") == rest.npos &&
         rest.find('*') != rest.npos &&
         std::ranges::count_if(rest, [](char c) { return c == '.' || c == '|'; }) > 1;
}

/// A word, and behind it a number and perhaps more in parentheses.
bool IsShape(std::string_view line) {
  const std::size_t open = line.find('(');
  return open != line.npos && open > 0 && line.back() == ')' &&
         std::all_of(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(open), &IsLetter) &&
         ParseNumber(line.substr(open + 1, line.find_first_of(",)", open) - open - 1)).has_value();
}

}  // namespace

bool DrawCurve(std::span<const std::string_view> lines, std::size_t rows) {
  const auto drawn = static_cast<std::size_t>(std::ranges::count_if(lines, &IsDrawn));
  return drawn >= kFewestDrawn && 2 * drawn >= rows;
}

bool ListShapes(std::span<const std::string_view> lines) {
  std::size_t shapes = 0;
  std::set<std::ptrdiff_t> lengths;
  for (const std::string_view line : lines) {
    if (!IsShape(line)) continue;
    ++shapes;
    lengths.insert(std::ranges::count(line, ','));
  }
  return shapes >= kFewestShapes && 2 * shapes >= lines.size() && lengths.size() > 1;
}

}  // namespace tarnwick
