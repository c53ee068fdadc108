#include "base/number_list_text.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr std::string_view kNone = "-";

}  // namespace

std::string NumberListText(std::span<const double> numbers) {
  std::string text;
  for (const double number : numbers) {
    if (!text.empty()) text += ' ';
    text += std::isfinite(number) ? ShortestText(number) : kNone;
  }
  return text;
}

std::optional<std::vector<double>> ParseNumberList(std::string_view text) {
  std::vector<double> numbers;
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), one.size() + 1));
    const std::optional<double> number = one == kNone ? kUndefined : ParseNumber(one);
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  return numbers;
}

std::optional<std::vector<double>> ParseNumberList(std::string_view text, std::size_t count) {
  std::optional<std::vector<double>> numbers = ParseNumberList(text);
  if (numbers && numbers->size() != count) return std::nullopt;
  return numbers;
}

}  // namespace tarnwick
