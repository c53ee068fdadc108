#include "data/guess/head_row.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/field_value.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::size_t kFewestCounted = 3;  // columns
constexpr std::size_t kFewestFar = 3;      // values of the row
constexpr std::size_t kFarShare = 3;       // of so many columns one is
constexpr std::size_t kFewestValues = 10;  // of a column
constexpr double kTimesFarther = 100;

/// The next data line behind `line`; the number of lines where there is none.
std::size_t NextData(Lines lines, std::size_t line, const TextLayout& layout) {
  for (++line; line < lines.size() && !IsDataLine(lines[line], layout);) ++line;
  return line;
}

bool CountsColumns(const std::vector<std::string>& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i] != std::to_string(i + 1)) return false;
  }
  return texts.size() >= kFewestCounted;
}

/// The first row below a line that counts the columns and one that names them.
std::optional<std::size_t> BelowCountedNames(Lines lines, std::size_t first,
                                             const TextLayout& layout) {
  if (first >= lines.size()) return std::nullopt;
  const std::vector<std::string> numbers = FieldTexts(lines[first], layout);
  const std::size_t next = NextData(lines, first, layout);
  if (next >= lines.size() || !CountsColumns(numbers)) return std::nullopt;
  const std::vector<std::string> names = FieldTexts(lines[next], layout);
  const bool words = std::ranges::all_of(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Text; });
  if (names.size() != numbers.size() || !words) return std::nullopt;
  const std::size_t row = NextData(lines, next, layout);
  return row < lines.size() ? std::optional(row) : std::nullopt;
}

bool IsFar(double value, std::span<const double> others) {
  if (others.size() < kFewestValues) return false;
  const auto [low, high] = std::ranges::minmax(others);
  if (low == high) return std::abs(value - low) > kTimesFarther * std::max(std::abs(low), 1.0);
  const bool decades = low > 0 && high > kTimesFarther * low;
  return !decades && std::max(low - value, value - high) > kTimesFarther * (high - low);
}

bool IsFarFromRows(std::string_view line, const TextLayout& layout, const TableBody& body) {
  const std::vector<std::string> texts = FieldTexts(line, layout);
  if (texts.size() != body.columns.size()) return false;
  std::size_t far = 0, numbers = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const ColumnGuess& column = body.columns[i];
    if (!column.has_numbers || column.is_date) continue;
    ++numbers;
    const std::optional<double> value = ValueOfField(texts[i], column.format);
    far += value && IsFar(*value, column.values) ? 1 : 0;
  }
  return far >= kFewestFar && kFarShare * far >= numbers;
}

/// A vector over the columns of a matrix: many values that rise along the line, parted from rows that do not by a remark.
bool IsVectorAbove(Lines lines, std::size_t first, const TextLayout& layout) {
  constexpr std::size_t kFewestRising = 8;
  const auto rises = [&layout](std::string_view line) {
    std::optional<double> last;
    std::size_t values = 0;
    for (const std::string& text : FieldTexts(line, layout)) {
      const std::optional<double> value = ParseNumber(text);
      if (!value || (last && *value <= *last)) return false;
      last = value;
      ++values;
    }
    return values >= kFewestRising;
  };
  const std::size_t next = NextData(lines, first, layout);
  const std::size_t behind = NextData(lines, next, layout);
  if (next == first + 1 || behind != next + 1 || behind >= lines.size()) return false;
  return rises(lines[first]) && !rises(lines[next]) && !rises(lines[behind]);
}

}  // namespace

std::size_t BehindHeadRow(Lines lines, std::size_t first, const TextLayout& layout,
                          const TableBody& body) {
  if (const auto row = BelowCountedNames(lines, first, layout)) return *row;
  if (first >= lines.size()) return first;
  if (!IsFarFromRows(lines[first], layout, body) && !IsVectorAbove(lines, first, layout)) {
    return first;
  }
  const std::size_t next = NextData(lines, first, layout);
  return next < lines.size() ? next : first;
}

}  // namespace tarnwick
