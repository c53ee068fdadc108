#include "data/names/name_marks.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "base/ascii.h"
#include "data/fields/line_words.h"

namespace tarnwick {
namespace {

bool IsSign(char c) {
  return !IsLetter(c) && !IsDigit(c) && static_cast<unsigned char>(c) < 0x80;
}

/// What the mark parts, without the blanks around it.
std::vector<std::string_view> TrimmedParts(std::string_view line, std::string_view mark) {
  std::vector<std::string_view> parts = PartsBetween(line, mark);
  for (std::string_view& part : parts) part = TrimBlankBytes(part);
  return parts;
}

}  // namespace

std::string_view WithoutClosingMark(std::string_view text, const TextLayout& layout,
                                    std::size_t columns) {
  constexpr std::size_t kLongestMark = 3;
  text = TrimBlankBytes(text);
  const std::size_t blank = text.find_last_of(" \t");
  if (blank == text.npos) return text;
  const std::string_view last = text.substr(blank + 1);
  const auto begins_comment = [&](const char& c) {
    return layout.BeginsComment(&c, last.data() + last.size());
  };
  const bool mark = last.size() <= kLongestMark && std::ranges::all_of(last, &IsSign) &&
                    last.find_first_of("[]()") == last.npos &&
                    std::ranges::any_of(last, begins_comment);
  if (!mark || WordsOfLine(text).size() == columns) return text;
  return TrimBlankBytes(text.substr(0, blank));
}

std::string_view WithoutRemarkBehindNames(std::string_view text) {
  constexpr std::string_view kMarks[] = {"#", "##", "//", "!"};
  const std::vector<LineWord> words = WordsOfLine(text);
  for (std::size_t i = 1; i + 1 < words.size(); ++i) {
    // "# Wave  # Int": each name has its mark.
    if (std::ranges::find(kMarks, words[i].text) == std::end(kMarks) ||
        words[i].text == words.front().text) {
      continue;
    }
    return TrimBlankBytes(
        text.substr(0, static_cast<std::size_t>(words[i].text.data() - text.data())));
  }
  return text;
}

std::vector<std::string_view> SplitAtDashes(std::string_view text) {
  std::vector<std::string_view> parts = TrimmedParts(text, " - ");
  const bool units = std::ranges::all_of(
      parts, [](std::string_view part) { return part.ends_with(']') || part.ends_with(')'); });
  if (parts.size() < 2 || (parts.size() == 2 && !units)) parts.clear();
  return parts;
}

bool AreTwins(std::span<const std::string> names) {
  if (names.size() != 2 || names[0].size() != names[1].size() || names[0].size() < 2) return false;
  const std::string_view one = names[0];
  const std::string_view other = names[1];
  return one != other && one.substr(0, one.size() - 1) == other.substr(0, other.size() - 1) &&
         std::ranges::any_of(one, &IsLetter);
}

std::vector<std::string_view> NamesOverCommas(std::string_view upper, std::string_view lower) {
  upper = TrimBlankBytes(upper);
  lower = TrimBlankBytes(lower);
  if (!upper.ends_with(',') || lower.find(',') == lower.npos) return {};
  if (lower.ends_with(',')) lower.remove_suffix(1);
  std::vector<std::string_view> names = TrimmedParts(upper.substr(0, upper.size() - 1), ",");
  const std::vector<std::string_view> more = TrimmedParts(lower, ",");
  names.insert(names.end(), more.begin(), more.end());
  const bool words = std::ranges::all_of(names, [](std::string_view name) {
    return !name.empty() && name.find_first_of(" \t") == name.npos;
  });
  if (!words) names.clear();
  return names;
}

}  // namespace tarnwick
