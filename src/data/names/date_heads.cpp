#include "data/names/date_heads.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

using Names = std::vector<std::string>;

/// A part of a time, and within which numbers it lies.
struct Part {
  std::string_view name;
  std::int32_t least = 0;
  std::int32_t most = 0;
};
constexpr Part kParts[] = {{"Year", 1700, 2200}, {"Month", 1, 12},  {"Day", 1, 31},
                           {"Hour", 0, 24},      {"Minute", 0, 59}, {"Second", 0, 60}};
constexpr std::size_t kOfDate = 3;

bool IsPart(std::string_view word, const Part& part) {
  const std::optional<double> value = ParseNumber(word);
  return value && *value >= part.least && *value <= part.most &&
         word.find_first_not_of("0123456789.") == word.npos;
}

/// Every row has as many words as there are columns and begins with these parts.
bool BeginWith(std::size_t parts, std::span<const std::string_view> rows, std::size_t columns) {
  return !rows.empty() && std::ranges::all_of(rows, [&](std::string_view row) {
    const std::vector<LineWord> words = WordsOfLine(row);
    if (words.size() != columns) return false;
    for (std::size_t i = 0; i < parts; ++i) {
      if (!IsPart(words[i].text, kParts[i])) return false;
    }
    return true;
  });
}

/// The names that `blanks` blanks or more part.
Names NamesBetween(std::string_view line, std::int32_t blanks, const TextLayout& layout) {
  Names names;
  std::int32_t end = 0;
  for (const LineWord& word : WordsOfLine(line)) {
    if (!names.empty() && word.begin - end < blanks) {
      names.back() += " " + NameText(word.text, layout);
    } else {
      names.push_back(NameText(word.text, layout));
    }
    end = word.end;
  }
  return names;
}

bool IsCalled(const std::string& name, std::string_view what) {
  const std::string lower = LowerAscii(name);
  return lower == what || lower.starts_with(std::string(what) + " ") ||
         lower.starts_with(std::string(what) + "(");
}

}  // namespace

std::optional<Names> NamesOverDate(std::string_view line, std::span<const std::string_view> rows,
                                   const TextLayout& layout, std::int32_t columns) {
  if (!layout.IsSeparator(' ') || layout.ByPlace()) return std::nullopt;
  const auto wanted = static_cast<std::size_t>(columns);
  const std::string_view text = WithoutCommentMarks(line, layout);
  for (const std::int32_t blanks : {2, 1}) {
    Names names = NamesBetween(text, blanks, layout);
    if (names.size() < 2 || !IsCalled(names.front(), "date")) continue;
    const bool timed = IsCalled(names[1], "time");
    const std::size_t named = timed ? 2 : 1;
    const std::size_t parts = wanted - std::min(wanted, names.size()) + named;
    const bool fits = timed ? parts == kOfDate + 2 || parts == kOfDate + 3 : parts == kOfDate;
    if (!fits || !BeginWith(parts, rows, wanted)) continue;
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(named));
    Names all;
    for (std::size_t i = 0; i < parts; ++i) all.emplace_back(kParts[i].name);
    all.insert(all.end(), names.begin(), names.end());
    return all;
  }
  return std::nullopt;
}

}  // namespace tarnwick
