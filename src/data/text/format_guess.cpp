#include "data/text/format_guess.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "data/text/field_value.h"
#include "data/text/format_guess_gaps.h"
#include "data/text/format_guess_lines.h"
#include "data/text/text_lines.h"
#include "data/text/text_names.h"

namespace tarnwick {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSingleSeparators[] = {"\t", ";", ",", "|"};
constexpr double kBlanksMustBeatBy =
    0.2;  // labels hold blanks: "sample 1<tab>3.4" is no table of three columns
constexpr std::size_t kScoredLines = 60;
constexpr std::size_t kScoredBytes = 64 * 1024;

TextLayout LayoutOf(const TextFormat& format, char line_end) {
  TDSInfo info;
  format.ApplyTo(info);
  return TextLayout(info, line_end);
}

/// Rows to judge separators by: from behind the first third of the lines, where headers are over.
std::vector<std::string_view> RowsToScore(const GuessLines& lines, const TextLayout& layout) {
  std::vector<std::string_view> rows;
  for (const std::string_view line : lines.first) {
    if (IsDataLine(line, layout)) rows.push_back(line);
  }
  std::size_t begin = rows.size() < 4 ? 0 : rows.size() / 3;
  std::size_t bytes = 0;
  std::vector<std::string_view> scored;
  for (; begin < rows.size() && scored.size() < kScoredLines && bytes < kScoredBytes; ++begin) {
    scored.push_back(rows[begin]);
    bytes += rows[begin].size();
  }
  return scored;
}

/// How well separators fit, 0 to 1: the share of values among the fields, times the share of rows with the commonest
/// number of fields. Rows without a separator count nothing.
double Score(const std::vector<std::string_view>& rows, const TextLayout& layout) {
  std::vector<int> counts;
  double sum = 0;
  for (const std::string_view row : rows) {
    const LineShape shape = ShapeOf(layout.merge ? TrimBlankBytes(row) : row, layout);
    counts.push_back(layout.merge ? shape.fields : shape.separators + 1);
    if (counts.back() > 1 && shape.filled > 0) sum += double(shape.values) / shape.filled;
  }
  if (counts.empty()) return 0;
  std::sort(counts.begin(), counts.end());
  std::ptrdiff_t commonest = 0;
  for (auto at = counts.begin(); at != counts.end();) {
    const auto behind = std::upper_bound(at, counts.end(), *at);
    if (*at > 1) commonest = std::max(commonest, behind - at);
    at = behind;
  }
  const auto all = static_cast<double>(counts.size());
  return sum / all * static_cast<double>(commonest) / all;
}

void ChooseSeparators(const GuessLines& lines, char line_end, TextFormat& format) {
  TextFormat tried = format;
  const auto score = [&](std::string_view separators, bool merge) {
    tried.separators = separators;
    tried.merge_separators = merge;
    const TextLayout layout = LayoutOf(tried, line_end);
    return Score(RowsToScore(lines, layout), layout);
  };
  double best = 0;
  std::string_view chosen;
  for (const std::string_view separators : kSingleSeparators) {
    const double reached = score(separators, false);
    if (reached > best + 1e-9) {
      best = reached;
      chosen = separators;
    }
  }
  const double blanks = score(kBlanks, true);
  if (blanks > best + (chosen.empty() ? 0 : kBlanksMustBeatBy)) chosen = kBlanks;
  if (!chosen.empty()) format.separators = chosen;
}

struct ColumnCounts {
  int filled = 0;
  int numbers = 0;         ///< with "." or a lone ","
  int commas = 0;          ///< fields that hold a comma
  int decimal_commas = 0;  ///< fields that read by the decimal comma format
  int grouped = 0;         ///< fields that read with commas grouping thousands
  int groupings = 0;       ///< of these, fields that read so and no other way
  int days_month_first = 0;
  int days_day_first = 0;
};

void CountFields(std::string_view line, const TextLayout& layout,
                 std::vector<ColumnCounts>& columns) {
  FieldCursor cursor(line, layout);
  std::string buffer;
  for (std::size_t i = 0; i < static_cast<std::size_t>(kMostColumns); ++i) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) return;
    if (columns.size() <= i) columns.resize(i + 1);
    const std::string_view text = FieldText(*field, layout, buffer);
    if (text.empty() || IsPlaceholder(text)) continue;
    ColumnCounts& column = columns[i];
    ++column.filled;
    const bool number = FieldValue(text, ColumnFormat::Number).has_value();
    column.numbers += number ? 1 : 0;
    column.commas += text.find(',') != text.npos ? 1 : 0;
    const bool decimal_comma = FieldValue(text, ColumnFormat::DecimalComma).has_value();
    const bool grouped = FieldValue(text, ColumnFormat::GroupedThousands).has_value();
    column.decimal_commas += decimal_comma ? 1 : 0;
    column.grouped += grouped ? 1 : 0;
    column.groupings += grouped && !number && !decimal_comma ? 1 : 0;
    if (number) continue;
    column.days_month_first += FieldValue(text, ColumnFormat::DateMonthFirst) ? 1 : 0;
    column.days_day_first += FieldValue(text, ColumnFormat::DateDayFirst) ? 1 : 0;
  }
}

ColumnGuess Judge(const ColumnCounts& counts) {
  ColumnGuess guess;
  const int days = std::max(counts.days_month_first, counts.days_day_first);
  const bool groups = counts.groupings > 0 && counts.grouped >= counts.numbers &&
                      counts.grouped > counts.decimal_commas;
  const int numbers = groups ? counts.grouped : std::max(counts.numbers, counts.decimal_commas);
  guess.has_numbers = counts.filled > 0 && 2 * std::max(days, numbers) >= counts.filled;
  if (!guess.has_numbers) return guess;
  guess.is_date = days > numbers;
  if (guess.is_date && counts.days_day_first > counts.days_month_first) {
    guess.format = ColumnFormat::DateDayFirst;
  }
  if (!guess.is_date && groups) {
    guess.format = ColumnFormat::GroupedThousands;
  } else if (!guess.is_date && counts.commas > 0 && counts.decimal_commas >= counts.numbers) {
    guess.format = ColumnFormat::DecimalComma;
  }
  return guess;
}

/// Columns as the rows show them.
std::vector<ColumnGuess> JudgeColumns(const std::vector<std::string_view>& rows,
                                      const TextLayout& layout) {
  std::vector<ColumnCounts> counts;
  for (const std::string_view row : rows) CountFields(row, layout, counts);
  std::vector<ColumnGuess> columns;
  columns.reserve(counts.size());
  for (const ColumnCounts& column : counts) columns.push_back(Judge(column));
  return columns;
}

enum class LineKind { Names, Mixed, Values };

/// What a line is, seen by the columns that hold numbers further down.
LineKind KindOf(std::string_view line, const TextLayout& layout,
                const std::vector<ColumnGuess>& columns) {
  FieldCursor cursor(line, layout);
  std::string buffer;
  int values = 0;
  int texts = 0;
  bool first_is_value = false;
  for (const ColumnGuess& column : columns) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    const std::string_view text = FieldText(*field, layout, buffer);
    if (!column.has_numbers || text.empty() || IsPlaceholder(text)) continue;
    const bool value = IsAnyValue(text);
    if (values + texts == 0) first_is_value = value;
    ++(value ? values : texts);
  }
  if (values == 0) return LineKind::Names;
  return texts == 0 || first_is_value ? LineKind::Values : LineKind::Mixed;
}

/// Lines before the first row of data: it holds values where the rows further down do. A line of names may hold numbers
/// too ("x;2019;2020"), but its first column is a text then, and only one such line may come.
std::int32_t CountHeaderLines(const std::vector<std::string_view>& lines, const TextLayout& layout,
                              const std::vector<ColumnGuess>& columns) {
  const auto numeric = std::count_if(columns.begin(), columns.end(),
                                     [](const ColumnGuess& c) { return c.has_numbers; });
  bool names_seen = false;
  for (std::size_t i = 0; i < lines.size() && numeric > 0; ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    const bool wide = CountFields(lines[i], layout, 2) >= (columns.size() > 1 ? 2 : 1);
    const LineKind kind = KindOf(lines[i], layout, columns);
    if (wide && (kind == LineKind::Values || (kind == LineKind::Mixed && names_seen))) {
      return static_cast<std::int32_t>(i);
    }
    names_seen = names_seen || wide;
  }
  return 0;
}

/// The rows behind the headers.
std::vector<std::string_view> Rows(const GuessLines& lines, const TextLayout& layout,
                                   std::int32_t headers) {
  std::vector<std::string_view> rows;
  for (auto i = static_cast<std::size_t>(std::max(headers, 0)); i < lines.first.size(); ++i) {
    if (IsDataLine(lines.first[i], layout)) rows.push_back(lines.first[i]);
  }
  for (const std::string_view line : lines.later) {
    if (IsDataLine(line, layout)) rows.push_back(line);
  }
  return rows;
}

bool IsBlankSeparated(const TextFormat& format) {
  return format.separators.find(' ') != std::string::npos;
}

/// The text behind its first lines.
std::string_view BehindLines(std::string_view text, std::int32_t lines, char line_end) {
  LineWalker walker(text, line_end);
  for (; lines > 0 && !walker.AtEnd(); --lines) walker.Next();
  return text.substr(static_cast<std::size_t>(walker.Position() - text.data()));
}

/// True when rows that agree on the number of separators do not agree on the number of fields: a table with gaps. A
/// single gap anywhere shifts columns, so every row counts, not only those that the rest is guessed from.
bool HasGaps(std::string_view text, const GuessLines& lines, const TextLayout& layout,
             std::int32_t headers, Progress& progress) {
  const std::optional<LineCount> common = CommonCount(Rows(lines, layout, headers), text, layout);
  if (!common) return false;
  // A column that is empty throughout shows only beside the line of names.
  const auto before = static_cast<std::size_t>(headers);
  if (before > 0 && before <= lines.first.size()) {
    const std::string_view names = lines.first[before - 1];
    if (IsDataLine(names, layout) && IsGapBeside(CountLine(names, layout), *common)) return true;
  }
  return HasGapBeside(*common, BehindLines(text, headers, layout.line_end), layout, progress);
}

}  // namespace

void TextFormat::ApplyTo(TDSInfo& info) const {
  info.TextSeparators = separators;
  info.TextMarkers = markers;
  info.MergeSeparators = merge_separators;
  info.DivideTextByWidth = divide_by_width;
  info.ColumnWidth = column_width;
  info.FileHasHeaders = header_lines;
}

TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints) {
  NoProgress unseen;
  return GuessTextFormat(text, hints, unseen);
}

TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints, Progress& progress) {
  TextFormat format;
  const GuessLines lines = CollectGuessLines(text);
  const char line_end = GuessLineEnd(text);
  format.markers = hints.markers.value_or(format.markers);
  if (hints.column_width) {
    format.divide_by_width = true;
    format.column_width = *hints.column_width;
  }
  if (hints.separators) {
    format.separators = *hints.separators;
  } else if (!format.divide_by_width) {
    ChooseSeparators(lines, line_end, format);
  }

  // Headers are found with every field in its own column, and gaps once the headers are known.
  const bool blanks = IsBlankSeparated(format);
  format.merge_separators = hints.merge_separators.value_or(blanks);
  const TextLayout apart = LayoutOf(format, line_end);
  const std::vector<ColumnGuess> rough = JudgeColumns(RowsToScore(lines, apart), apart);
  format.header_lines = hints.header_lines.value_or(CountHeaderLines(lines.first, apart, rough));
  if (!hints.merge_separators) {
    // Blanks align columns; elsewhere a doubled separator may be an empty field.
    const bool merged = blanks || format.divide_by_width;
    format.merge_separators = merged || !HasGaps(text, lines, apart, format.header_lines, progress);
  }

  const TextLayout layout = LayoutOf(format, line_end);
  format.columns = JudgeColumns(Rows(lines, layout, format.header_lines), layout);
  format.decimal_comma =
      std::any_of(format.columns.begin(), format.columns.end(),
                  [](const ColumnGuess& c) { return c.format == ColumnFormat::DecimalComma; });
  return format;
}

}  // namespace tarnwick
