#include "data/import/second_look.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "base/number_text.h"
#include "base/word_list.h"
#include "data/fields/field_kind.h"
#include "data/fields/field_value.h"
#include "data/fields/line_words.h"
#include "data/fields/missing_values.h"
#include "data/fields/text_lines.h"
#include "data/guess/rows_above.h"
#include "data/names/number_names.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

using Notes = std::vector<std::string>;
using TextLines = std::vector<std::string_view>;

constexpr std::size_t kMostLines = 4000;  // of the headers, and of the rows behind them
constexpr std::size_t kFewestAbove = 3;   // a line or two of values are settings
constexpr std::size_t kFewestRemarks = 3;
constexpr std::size_t kTailBytes = 4096;   // in which the last row is looked for
constexpr std::size_t kFewestOthers = 10;  // values that show how far apart values are
constexpr double kTimesFarther = 100;
constexpr std::size_t kFewestChanging = 8;  // rows that show how a column is written

/// The text as the guess cuts it.
struct Looked {
  const ImportSource& source;
  const TextFormat& format;
  TextLayout layout;
  TextLines headers;  ///< the first lines
  TextLines rows;     ///< those behind them, blank ones and remarks among them
  TextLines tail;     ///< the last data lines of a table that ends with the text
};

/// The data lines at the end of the text, without what is left of a line that begins before.
TextLines TailOf(std::string_view text, const TextLayout& layout) {
  if (text.size() > kTailBytes) {
    text.remove_prefix(text.size() - kTailBytes);
    text.remove_prefix(std::min(text.find(layout.line_end), text.size()));
  }
  TextLines lines = FirstLines(text, kTailBytes, layout.line_end);
  std::erase_if(lines, [&](std::string_view line) { return !IsDataLine(line, layout); });
  return lines;
}

Looked Look(const ImportSource& source, const TextFormat& format, std::string_view text,
            char line_end) {
  TextLayout layout(source.info, line_end);
  const auto count = static_cast<std::size_t>(std::max(source.info.FileHasHeaders, 0));
  const std::string_view behind = BehindLines(text, count, line_end);
  const auto table = static_cast<std::size_t>(std::max(source.info.TableLines, 0));
  TextLines rows =
      FirstLines(behind, table > 0 ? std::min(table, kMostLines) : kMostLines, line_end);
  TextLines tail = table > 0 ? TextLines() : TailOf(behind, layout);
  return {source,
          format,
          std::move(layout),
          FirstLines(text, std::min(count, kMostLines), line_end),
          std::move(rows),
          std::move(tail)};
}

bool IsNamesLine(const TDSInfo& info, std::size_t line) {
  const auto number = static_cast<std::int32_t>(line) + 1;
  return number == info.NamesLine || number == info.UnitsLine || (info.NamesLine == 0 && line == 0);
}

/// Values of a table above, or some among settings, are told, or not worth it. Rows have a field for each column.
void TellOfLinesAbove(const Looked& looked, Notes& notes) {
  if (looked.format.values_above > 0 || !looked.format.other_tables.empty()) return;
  const auto columns = static_cast<std::int32_t>(looked.source.columns.size());
  std::size_t found = 0, first = 0;
  for (std::size_t i = 0; i < looked.headers.size(); ++i) {
    const std::string_view line = looked.headers[i];
    if (IsNamesLine(looked.source.info, i) || !IsDataLine(line, looked.layout) ||
        CountFields(line, looked.layout, columns + 1) != columns ||
        !HoldsValuesAsRows(line, looked.layout, looked.source.columns)) {
      continue;
    }
    if (++found == 1) first = i;
  }
  if (found < kFewestAbove) return;
  notes.push_back(std::to_string(found) +
                  " lines further above hold values as the rows do and are left out (--headers " +
                  std::to_string(first) + " has them read)");
}

/// Lines of a mark that the guess took for one of remarks: "*  2011  9 11  0  0". Rows behind "#" were put there by somebody.
void TellOfRemarks(const Looked& looked, Notes& notes) {
  const std::string& marks = looked.source.info.CommentMarks;
  for (const std::string_view mark : {"*", "!", "//", ";", ">"}) {
    if (marks.find(mark) == marks.npos) continue;
    const auto holds_values = [&](std::string_view line) {
      line = TrimBlankBytes(line);
      if (!line.starts_with(mark)) return false;
      const auto holds = [&](std::string_view row) {
        return HoldsValuesAsRows(row, looked.layout, looked.source.columns);
      };
      return holds(line) || holds(TrimBlankBytes(line.substr(mark.size())));
    };
    const auto found = static_cast<std::size_t>(std::ranges::count_if(looked.rows, holds_values));
    if (found < kFewestRemarks) continue;
    notes.push_back("lines that begin with \"" + std::string(mark) +
                    "\" are passed over as remarks, though " + std::to_string(found) +
                    " of them hold values as the rows do (--comment \"# %\" has them read)");
  }
}

/// "5.0 2.5" among words: two numbers that are nothing else.
bool HoldsNumbers(std::string_view line) {
  std::size_t numbers = 0;
  for (const LineWord& word : WordsOfLine(line)) {
    numbers += KindOfField(word.text) == FieldKind::Number ? 1 : 0;
  }
  return numbers > 1;
}

void TellOfShare(const Looked& looked, Notes& notes) {
  const TextFormat& format = looked.format;
  const bool told = format.values_above > 0 || !format.other_tables.empty() || !notes.empty();
  if (told || looked.headers.size() + looked.rows.size() >= kMostLines) return;
  const auto is_data = [&](std::string_view line) { return IsDataLine(line, looked.layout); };
  const auto rows = std::ranges::count_if(looked.rows, is_data);
  const auto outside = std::ranges::count_if(
      looked.headers, [&](std::string_view line) { return is_data(line) && HoldsNumbers(line); });
  if (outside <= rows) return;
  notes.push_back("the table has " + Counted(rows, "row") + ", while " + std::to_string(outside) +
                  " lines above it hold numbers as well (--headers has rows begin elsewhere)");
}

/// The value of a row in each column, as far as it has one.
std::vector<std::optional<double>> ValuesOf(std::string_view row, const Looked& looked) {
  std::vector<std::optional<double>> values(looked.source.columns.size());
  FieldCursor cursor(row, looked.layout);
  std::string buffer;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    const ColumnGuess& column = looked.source.columns[i];
    if (!column.has_numbers || column.is_date || column.only_ahead) continue;
    values[i] = ValueOfField(FieldText(*field, looked.layout, buffer), column.format);
  }
  return values;
}

/// How far apart values are.
struct Range {
  double low = 0;
  double high = 0;
  std::size_t count = 0;

  void Add(double value) {
    low = count == 0 ? value : std::min(low, value);
    high = count == 0 ? value : std::max(high, value);
    ++count;
  }
};

/// Which row of the text.
enum class EndRow : std::uint8_t { First, Last };

/// The values of a column but for the one of that row.
Range OthersThan(double value, EndRow end, std::size_t column, const Looked& looked) {
  Range range;
  bool taken = false;
  for (const double other : looked.source.columns[column].values) {
    if (other == value && !taken) {
      taken = true;
    } else {
      range.Add(other);
    }
  }
  if (end == EndRow::First) return range;
  for (std::size_t i = 0; i + 1 < looked.tail.size(); ++i) {
    if (const auto other = ValuesOf(looked.tail[i], looked)[column]) range.Add(*other);
  }
  return range;
}

bool IsLone(double value, const Range& others) {
  const double gap = std::max(others.low - value, value - others.high);
  // What goes through decades may go on to the next.
  const bool decades = others.low > 0 && others.high > kTimesFarther * others.low;
  return others.count >= kFewestOthers && others.high > others.low && !decades &&
         gap > kTimesFarther * (others.high - others.low);
}

void TellOfLoneRow(std::string_view row, EndRow end, const Looked& looked, Notes& notes) {
  const MissingValues missing(looked.source.info.MissingValues);
  const auto values = ValuesOf(row, looked);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i] || missing.MatchesNumber(*values[i], static_cast<std::int32_t>(i))) continue;
    const Range others = OthersThan(*values[i], end, i, looked);
    if (!IsLone(*values[i], others)) continue;
    const bool first = end == EndRow::First;
    notes.push_back(std::string("the ") + (first ? "first" : "last") + " row has " +
                    ShortestText(*values[i]) + " in " +
                    looked.source.Quoted(static_cast<std::int32_t>(i)) + ", far from all others, " +
                    ShortestText(others.low) + " to " + ShortestText(others.high) +
                    (first ? " (--headers " + std::to_string(looked.source.info.FileHasHeaders + 1)
                           : std::string(" (--rows 6,1")) +
                    " leaves it out)");
    return;
  }
}

void TellOfLoneRows(const Looked& looked, Notes& notes) {
  const auto is_data = [&](std::string_view line) { return IsDataLine(line, looked.layout); };
  const auto first = std::ranges::find_if(looked.rows, is_data);
  if (first != looked.rows.end()) TellOfLoneRow(*first, EndRow::First, looked, notes);
  if (looked.tail.size() > 1) TellOfLoneRow(looked.tail.back(), EndRow::Last, looked, notes);
}

/// Rows of zeros behind others whose X runs on without any: a text of so many lines that was not filled.
void TellOfZerosAtEnd(const Looked& looked, Notes& notes) {
  const auto is_zeros = [&](std::string_view row) {
    const auto values = ValuesOf(row, looked);
    return values.size() > 1 && std::ranges::all_of(values, [](const auto& value) {
             return value == std::optional(0.0);
           });
  };
  const auto behind = std::find_if_not(looked.tail.rbegin(), looked.tail.rend(), is_zeros);
  const auto zeros = behind - looked.tail.rbegin();
  if (zeros < 2 || behind == looked.tail.rend() || looked.source.columns.empty()) return;
  const std::span<const double> all = looked.source.columns.front().Successive();
  const std::span<const double> x(all.begin(), std::ranges::find(all, 0.0));
  const bool runs = std::ranges::is_sorted(x) || std::ranges::is_sorted(x, std::greater<>());
  if (x.size() < kFewestOthers || !runs) return;
  notes.push_back("the last " + std::to_string(zeros) +
                  " rows hold nothing but zeros, as what was not measured does (--rows 6," +
                  std::to_string(zeros) + " leaves them out)");
}

/// "12.5" below "12.5.2024" below "13.1": whatever the column is, most of its fields say otherwise.
void TellOfChangingFields(const Looked& looked, Notes& notes) {
  const ImportSource& source = looked.source;
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    if (!source.columns[i].has_numbers) continue;
    std::vector<FieldKind> kinds;
    for (const std::string& text : source.samples[i]) {
      const FieldKind kind = KindOfField(text);
      if (kind == FieldKind::Number || kind == FieldKind::Date) kinds.push_back(kind);
    }
    std::size_t changes = 0;
    for (std::size_t row = 1; row < kinds.size(); ++row) {
      changes += kinds[row] != kinds[row - 1] ? 1 : 0;
    }
    if (kinds.size() < kFewestChanging || 2 * changes < kinds.size()) continue;
    notes.push_back("the fields of " + source.Quoted(static_cast<std::int32_t>(i)) +
                    " read as numbers in some rows and as dates in others (--x-format and "
                    "--y-format settle it)");
  }
}

/// "1.5" and "67000041" over columns of numbers: values of a row that passed for names.
void TellOfNamesOfNumbers(const Looked& looked, Notes& notes) {
  const ImportSource& source = looked.source;
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const std::int32_t line = std::max(source.info.NamesLine, 1);
  if (source.info.NamesLine < 0 || std::ssize(looked.headers) < line || HoldRisingNumbers(names)) {
    return;
  }
  const std::string_view text = looked.headers[static_cast<std::size_t>(line) - 1];
  std::vector<std::string> numbers;
  std::size_t columns = 0;
  for (std::size_t i = 0; i < std::min(names.size(), source.columns.size()); ++i) {
    if (!source.columns[i].has_numbers) continue;
    ++columns;
    std::string quoted = '"' + names[i] + '"';
    const bool number = KindOfField(names[i]) == FieldKind::Number;
    // Somebody put these into quotes.
    if (number && text.find(quoted) == text.npos) numbers.push_back(std::move(quoted));
  }
  // One may be a number of its own: "x,.02".
  if (2 * numbers.size() <= columns) return;
  constexpr std::size_t kMostNames = 3;
  const bool one = numbers.size() == 1;
  notes.push_back(std::string(one ? "the name " : "the names ") + Listed(numbers, kMostNames) +
                  (one ? " is a number" : " are numbers") + ": line " + std::to_string(line) +
                  " may be none of names (--headers " + std::to_string(line - 1) +
                  " has it read as a row)");
}

}  // namespace

std::vector<std::string> SecondLook(const ImportSource& source, const TextFormat& format,
                                    std::string_view text, char line_end) {
  const Looked looked = Look(source, format, text, line_end);
  // The lines that describe columns hold numbers, too.
  const bool described = format.cuts_from == CutsFrom::Description;
  Notes notes;
  if (!described) TellOfLinesAbove(looked, notes);
  TellOfRemarks(looked, notes);
  if (!described) TellOfShare(looked, notes);
  TellOfLoneRows(looked, notes);
  TellOfZerosAtEnd(looked, notes);
  TellOfChangingFields(looked, notes);
  TellOfNamesOfNumbers(looked, notes);
  return notes;
}

}  // namespace tarnwick
