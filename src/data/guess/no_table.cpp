#include "data/guess/no_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/guess/format_guess_lines.h"
#include "data/guess/separators_guess.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLinesLookedAt = 1000;

/// How many of the words, parted by blanks or marks, are numbers or dates; quotes around them do not count.
std::size_t CountValues(std::string_view line) {
  constexpr std::string_view kBetween = " \t,;|\"'";
  std::size_t values = 0;
  while (!line.empty()) {
    const std::string_view word = line.substr(0, line.find_first_of(kBetween));
    values += IsValue(KindOfField(word)) ? 1 : 0;
    line.remove_prefix(std::min(word.size() + 1, line.size()));
  }
  return values;
}

/// "of its 30 lines", "of its first 1000 lines"
std::string OfLines(std::size_t lines) {
  const bool all = lines < kLinesLookedAt;
  return std::string(all ? "of its " : "of its first ") +
         Counted(static_cast<std::int64_t>(lines), "line");
}

std::string OnlyRemarks(std::string_view line) {
  const std::string_view mark = line.substr(0, line.starts_with("//") ? 2 : 1);
  std::string why = "all its lines begin with \"" + std::string(mark) + "\", as remarks do";
  if (CountValues(line.substr(mark.size())) < 1) return why;
  return why + "; if they are data, tell that remarks begin otherwise (--comment \"" +
         (mark == "%" ? "#" : "%") + "\")";
}

/// What has lines read as rows behind so many.
std::string ToldByHeaders(std::int32_t headers) {
  const std::string lines = headers == 0 ? "no header line" : Counted(headers, "header line");
  return lines + (headers > 1 ? " stand" : " stands") + " above (--headers " +
         std::to_string(headers) + ')';
}

std::string FewRows(const TextFormat& format, std::size_t lines) {
  const std::string first = std::to_string(format.header_lines + 1);
  if (format.table_rows == 1) {
    return (lines == 1 ? "it holds one line of values; if that is a table, tell that "
                       : "no two lines with the same number of values follow each other; if a "
                         "table begins at line " +
                             first + ", tell that ") +
           ToldByHeaders(format.header_lines);
  }
  const auto rows = static_cast<std::int64_t>(format.table_rows);
  const std::int64_t others =
      std::max(static_cast<std::int64_t>(lines) - rows, std::int64_t{format.header_lines});
  return "its longest run of rows has " + Counted(rows, "row") + ", from line " + first +
         " on, among " + Counted(others, "other line") + "; if these are the data, tell that " +
         ToldByHeaders(format.header_lines);
}

/// Of lines none of which is a row.
std::string NumbersAmongWords(const std::vector<std::string_view>& lines) {
  std::size_t one = 0, several = 0;
  for (const std::string_view line : lines) {
    const std::size_t values = CountValues(line);
    one += values == 1 ? 1 : 0;
    several += values > 1 ? 1 : 0;
  }
  if (one + several == 0) return "none " + OfLines(lines.size()) + " holds a number";
  const std::size_t holding = several > 0 ? several : one;
  return OfLines(lines.size()) + ", " + std::to_string(holding) +
         (holding == 1 ? " holds " : " hold ") +
         (several > 0 ? "several numbers, among more words" : "a number, none more than one") +
         "; if they are rows, tell what parts their fields and that no header line stands above "
         "(--separators \" \" --headers 0)";
}

}  // namespace

std::string WhatStandsInstead(std::string_view text, const TextFormat& format) {
  const char line_end = GuessLineEnd(text);
  const TextLayout layout = LayoutOf(format, line_end);
  std::vector<std::string_view> filled = FirstLines(text, kLinesLookedAt, line_end);
  std::erase_if(filled, [](std::string_view line) { return TrimBlankBytes(line).empty(); });
  if (filled.empty()) return "it holds nothing but empty lines";
  const std::vector<std::string_view> lines = [&] {
    std::vector<std::string_view> data = filled;
    std::erase_if(data, [&](std::string_view line) { return !IsDataLine(line, layout); });
    return data;
  }();
  if (lines.empty()) return OnlyRemarks(TrimBlankBytes(filled.back()));
  const bool words = std::ranges::none_of(
      lines, [](std::string_view line) { return std::ranges::any_of(line, &IsDigit); });
  if (words && lines.size() == 1) return "it holds a line of words, names perhaps, and no rows";
  return format.table_rows > 0 ? FewRows(format, lines.size()) : NumbersAmongWords(lines);
}

}  // namespace tarnwick
