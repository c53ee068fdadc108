#include "data/guess/table_worth.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/ascii.h"
#include "data/fields/line_words.h"
#include "data/names/header_lines.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLinesPerFewRows = 5;  // lines of text that one of a few rows outweighs
constexpr std::size_t kHandful = 5;          // rows, fewer than which weigh less
constexpr std::size_t kLinesPerHandful =
    2;  // of text that one of so few, or of single numbers, outweighs
constexpr std::size_t kLinesPerRow = 10;  // of text that one of many rows outweighs
constexpr std::size_t kLinesOfProse = 1;  // of prose that one of many rows without names outweighs
constexpr std::size_t kLinesBehind = 20;  // of text that may follow the last table
constexpr std::size_t kFewestNamedRows = 3;  // below a line of names, at the end of a text
constexpr std::size_t kLinesBehindNamed = 2;
constexpr std::size_t kLinesAboveRule = 3;  // names, units, the rule itself
constexpr std::size_t kReportRows = 15;     // of each table of a report
constexpr double kReportDensity = 0.9;      // of values among the fields of each table of a report

/// A line that names its columns stands right above.
bool IsNamed(const FoundTable& table, const GuessLines& lines, const TextLayout& layout) {
  const auto above = std::span(lines.first).first(table.first);
  const std::int32_t names = FindHeaderLines(above, layout, table.fields).names;
  return names > 0 && static_cast<std::size_t>(names) + kLinesBehindNamed > table.first;
}

/// A few full rows below a line that names their columns end the text.
bool EndsNamed(const FoundTable& table, const GuessLines& lines, const TextLayout& layout) {
  const bool full = table.weight >= static_cast<double>(table.rows) && table.odd_rows == 0;
  if (!lines.whole || !full || table.fields < 2 || table.rows < kFewestNamedRows) return false;
  return table.behind + kLinesBehindNamed >= lines.first.size() && IsNamed(table, lines, layout);
}

/// The nearest line above it with anything in it.
std::string_view LineAbove(const FoundTable& table, const GuessLines& lines) {
  for (std::size_t i = table.first; i > 0; --i) {
    const std::string_view line = TrimBlankBytes(lines.first[i - 1]);
    if (!line.empty()) return line;
  }
  return {};
}

/// Full rows below one line of names that comes again above others, as a program prints them by and by.
bool ComesAgain(const FoundTable& table, std::span<const FoundTable> all, const GuessLines& lines,
                const TextLayout& layout) {
  const auto is_full = [](const FoundTable& found) {
    return found.fields > 2 && found.rows >= kFewestNamedRows && found.odd_rows == 0 &&
           found.weight >= static_cast<double>(found.rows);
  };
  const std::string_view names = LineAbove(table, lines);
  if (!is_full(table) || names.empty() || !IsNamed(table, lines, layout)) return false;
  std::size_t rows = 0;
  for (const FoundTable& other : all) {
    const bool alike = other.fields == table.fields && LineAbove(other, lines) == names;
    rows += alike && is_full(other) ? other.rows : 0;
  }
  return rows >= kFewRows && rows > table.rows;
}

/// A line that names columns, or a rule, tells where a table begins.
bool IsHeaded(const FoundTable& table, const GuessLines& lines, const TextLayout& layout) {
  const std::string_view above =
      table.first > 0 ? TrimBlankBytes(lines.first[table.first - 1]) : std::string_view();
  return (!above.empty() && IsRule(above)) || IsNamed(table, lines, layout);
}

/// Rows below a rule of as many strokes as they have fields, below as many names.
bool StandsBelowRule(const FoundTable& table, std::span<const std::string_view> lines,
                     const TextLayout& layout) {
  const bool long_enough = table.fields > 1 && table.rows >= kFewestNamedRows;
  if (!long_enough || table.first < kLinesAboveRule) return false;
  if (!UnitsOverRule({}, lines[table.first - 1], layout, table.fields)) return false;
  const auto names = [&](std::size_t line) {
    return CountFields(lines[line], layout, table.fields + 1) == table.fields;
  };
  return names(table.first - 2) || names(table.first - 3);
}

/// Lines that are sentences or parts of them: four words or more, nearly all of letters alone, one at least in small ones.
std::size_t LinesOfProse(std::span<const std::string_view> lines, const TextLayout& layout) {
  constexpr std::size_t kFewestWords = 4;
  const auto is_word = [](const LineWord& word) {
    const std::string_view text = word.text.substr(0, word.text.find_last_not_of(".,;:!?)\"'") + 1);
    return !text.empty() &&
           std::ranges::all_of(text, [](char c) { return IsLetter(c) || c == '\''; });
  };
  const auto is_small = [](const LineWord& word) {
    return word.text.size() > 1 &&
           std::ranges::all_of(word.text, [](char c) { return c >= 'a' && c <= 'z'; });
  };
  return static_cast<std::size_t>(std::ranges::count_if(lines, [&](std::string_view line) {
    if (!IsDataLine(line, layout)) return false;
    const std::vector<LineWord> words = WordsOfLine(line);
    const auto plain = static_cast<std::size_t>(std::ranges::count_if(words, is_word));
    return words.size() >= kFewestWords && 4 * plain >= 3 * words.size() &&
           std::ranges::any_of(words, is_small);
  }));
}

/// Rows of all tables that are long and full.
std::size_t RowsOfTables(std::span<const FoundTable> tables) {
  std::size_t rows = 0;
  for (const FoundTable& table : tables) {
    const bool full = table.weight >= kReportDensity * static_cast<double>(table.rows);
    if (table.fields > 1 && table.rows >= kReportRows && full) rows += table.rows;
  }
  return rows;
}

}  // namespace

bool IsWorthIt(const FoundTable& table, std::span<const FoundTable> all, const GuessLines& lines,
               const TextLayout& layout) {
  const auto is_text = [&layout](std::string_view line) { return IsDataLine(line, layout); };
  const std::size_t rows = table.rows + table.odd_rows;
  if (rows == 1 && table.weight < kTableDensity) return false;
  const auto texts = static_cast<std::size_t>(std::ranges::count_if(lines.first, is_text));
  if (rows < kFewRows || table.fields == 1) {
    const bool few = rows < kHandful && !IsHeaded(table, lines, layout);
    const std::size_t per_row = table.fields == 1 || few ? kLinesPerHandful : kLinesPerFewRows;
    return per_row * rows >= texts || EndsNamed(table, lines, layout) ||
           StandsBelowRule(table, lines.first, layout) || ComesAgain(table, all, lines, layout);
  }
  // A report of tables is no text with an example.
  if (2 * RowsOfTables(all) >= texts) return true;
  if (kLinesOfProse * rows <= LinesOfProse(lines.first, layout) &&
      !IsHeaded(table, lines, layout)) {
    return false;
  }
  // However long its preamble, a file of data ends with its data; within a text they are an example.
  return kLinesPerRow * rows >= texts || table.behind + kLinesBehind >= lines.first.size();
}

bool IsWorthTelling(const FoundTable& other, const FoundTable& read) {
  constexpr std::size_t kFewestRows = 3, kFewestOfWords = 10;
  if ((other.fields == 1 && read.fields > 1) || other.rows < kFewestRows) return false;
  const bool beside = other.stands_apart || (read.stands_apart && other.behind <= read.first);
  if (beside && other.fields > 2 && other.rows >= kFewestOfWords) return true;
  return other.weight >= kTableDensity * static_cast<double>(other.rows) &&
         5 * other.rows >= read.rows / 4;
}

}  // namespace tarnwick
