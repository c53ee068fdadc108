#include "data/guess/rows_above.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/field_kind.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestNumbers = 2;        // columns of them that tell a row
constexpr std::size_t kFewestNumbersRagged = 3;  // where the number of fields does not

bool StandsForNone(FieldKind kind) {
  return kind == FieldKind::Empty || kind == FieldKind::Placeholder;
}

/// "8M4I" above "20M" and "25M": what passed for units are labels.
bool IsLabelBesideUnits(std::string_view text, const ColumnGuess& column) {
  return column.has_units && !text.empty() && IsDigit(text.front()) &&
         KindOfField(text) == FieldKind::Text;
}

/// "30.0a", "12?"
bool IsFlagged(std::string_view text) {
  constexpr std::size_t kLongestMark = 2;
  const std::size_t end = text.find_last_of("0123456789");
  return end != text.npos && end + 1 < text.size() && text.size() - end - 1 <= kLongestMark &&
         KindOfField(text.substr(0, end + 1)) == FieldKind::Number;
}

bool IsUndefined(std::string_view text) {
  const std::string lower = LowerAscii(TrimBlankBytes(text));
  return lower == "nan" || lower == "inf" || lower == "-inf" || lower == "+inf" || lower == "-nan";
}

/// What a line holds where the rows hold numbers.
struct Fit {
  std::size_t fields = 0;
  std::size_t numbers = 0;    ///< columns of them
  std::size_t values = 0;     ///< of these, with a value on the line
  std::size_t missing = 0;    ///< with what stands for none, or behind the line's end
  std::size_t undefined = 0;  ///< of these, with "nan" or "inf", as no column is called
  std::size_t flagged = 0;    ///< of those, with a number and a mark right behind it
  bool dated = false;         ///< the first column is one of dates, and so is the first field
  bool elsewhere =
      false;  ///< a number where the rows have texts, or a text where they begin with a number
};

Fit FitOf(std::string_view line, const TextLayout& layout, std::span<const ColumnGuess> columns) {
  Fit fit;
  FieldCursor cursor(line, layout);
  std::string buffer;
  for (const ColumnGuess& column : columns) {
    const std::optional<std::string_view> field = cursor.Next();
    fit.fields += field ? 1 : 0;
    const std::string_view text = field ? FieldText(*field, layout, buffer) : std::string_view();
    const FieldKind kind = KindOfField(text);
    if (!column.has_numbers) {
      fit.elsewhere = fit.elsewhere || kind == FieldKind::Number;
      continue;
    }
    ++fit.numbers;
    const bool value = kind == FieldKind::Quantity ? column.has_units : IsValue(kind);
    fit.values += value ? 1 : 0;
    fit.undefined += IsUndefined(text) ? 1 : 0;
    const bool flagged = kind == FieldKind::Text && IsFlagged(text);
    fit.flagged += flagged ? 1 : 0;
    fit.missing += flagged || StandsForNone(kind) || IsLabelBesideUnits(text, column) ? 1 : 0;
    fit.dated = fit.dated || (fit.fields == 1 && column.is_date && kind == FieldKind::Date);
    fit.elsewhere = fit.elsewhere || (fit.fields == 1 && kind == FieldKind::Text);
  }
  fit.fields += cursor.Next() ? 1 : 0;
  return fit;
}

/// The number with decimals that the line begins with; without them it may count something.
std::optional<double> FirstDecimal(std::string_view line, const TextLayout& layout) {
  std::string buffer;
  const std::optional<std::string_view> field = FieldCursor(TrimBlankBytes(line), layout).Next();
  if (!field || field->find('.') == field->npos) return std::nullopt;
  return ParseNumber(FieldText(*field, layout, buffer));
}

/// The first column steps from this line to the next as it does from that to the one behind it.
bool StepsOn(std::span<const std::string_view> lines, std::size_t line, const TextLayout& layout) {
  constexpr double kEven = 1e-6;  // of the step
  if (line + 2 >= lines.size()) return false;
  const auto x = FirstDecimal(lines[line], layout), next = FirstDecimal(lines[line + 1], layout),
             last = FirstDecimal(lines[line + 2], layout);
  if (!x || !next || !last || *next == *last) return false;
  return std::abs((*next - *x) - (*last - *next)) <= kEven * std::abs(*last - *next);
}

}  // namespace

std::size_t WithAlikeRowsAbove(std::span<const std::string_view> lines, std::size_t first,
                               const TextLayout& layout, const TableBody& body) {
  const bool by_blanks = layout.IsSeparator(' ') || layout.ByPlace();
  const auto is_row = [&](std::string_view line) {
    const Fit fit = FitOf(line, layout, body.columns);
    const bool as_long = fit.fields == body.columns.size();
    if (as_long && fit.undefined > 0 && fit.undefined == fit.numbers) return true;
    // Behind a date numbers with marks are no names.
    if (as_long && fit.dated && fit.flagged > 0 && fit.values + fit.missing == fit.numbers) {
      return true;
    }
    return (as_long || (!by_blanks && fit.values >= kFewestNumbersRagged)) &&
           fit.values >= kFewestNumbers && 2 * fit.values > fit.numbers &&
           fit.values + fit.missing == fit.numbers;
  };
  for (std::size_t i = first; i > 0; --i) {
    const std::string_view line = lines[i - 1];
    if (TrimBlankBytes(line).empty()) break;
    if (!IsDataLine(line, layout)) continue;
    if (!is_row(line)) break;
    first = i - 1;
  }
  return first;
}

std::size_t WithRowsAsBelow(std::span<const std::string_view> lines, const FoundTable& table,
                            const TextLayout& layout, const TableBody& body) {
  constexpr std::int32_t kMostFields = 100;
  std::size_t first = table.first;
  if (!layout.IsSeparator(' ') || layout.ByPlace()) return first;
  // A few rows of another number may end it.
  const auto rows =
      lines.subspan(first, std::min(table.behind + kStrayLines, lines.size()) - first);
  const auto is_row = [&](std::size_t line) {
    const Fit fit = FitOf(lines[line], layout, body.columns);
    const std::int32_t fields = CountFields(lines[line], layout, kMostFields);
    // "-24.0 0.006" above "-23.5 0.046 0.066" leaves out its end.
    const bool ends_early =
        fields < table.fields && std::cmp_equal(fit.values, fields) && StepsOn(lines, line, layout);
    if (fit.values < kFewestNumbers || fit.elsewhere) return false;
    if (fit.values < fit.numbers && !ends_early) return false;
    return fields != table.fields && std::ranges::any_of(rows, [&](std::string_view row) {
             return IsDataLine(row, layout) && CountFields(row, layout, kMostFields) == fields;
           });
  };
  while (first > 0 && IsDataLine(lines[first - 1], layout) && is_row(first - 1)) --first;
  return first;
}

bool HoldsValuesAsRows(std::string_view line, const TextLayout& layout,
                       std::span<const ColumnGuess> columns) {
  const Fit fit = FitOf(line, layout, columns);
  return !fit.elsewhere && fit.values >= kFewestNumbers && 2 * fit.values > fit.numbers;
}

ValuesAbove FindValuesAbove(std::span<const std::string_view> above, std::int32_t first_line,
                            const TextLayout& layout, std::span<const ColumnGuess> columns) {
  ValuesAbove found;
  int texts = 0;
  for (std::size_t i = above.size(); i > 0; --i) {
    if (!IsDataLine(above[i - 1], layout)) continue;
    const bool values = HoldsValuesAsRows(above[i - 1], layout, columns);
    if (!values && ++texts > kStrayLines) break;
    if (!values) continue;
    ++found.lines;
    found.from = first_line + static_cast<std::int32_t>(i) - 1;
  }
  return found;
}

}  // namespace tarnwick
