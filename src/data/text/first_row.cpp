#include "data/text/first_row.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "data/text/field_kind.h"

namespace tarnwick {
namespace {

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
    const FieldKind kind = KindOfField(FieldText(*field, layout, buffer));
    if (!column.has_numbers || kind == FieldKind::Empty || kind == FieldKind::Placeholder) continue;
    if (values + texts == 0) first_is_value = IsValue(kind);
    ++(IsValue(kind) ? values : texts);
  }
  if (texts == 0) return LineKind::Values;
  if (texts > values) return LineKind::Names;
  return first_is_value ? LineKind::Values : LineKind::Mixed;
}

/// True for "country;2019;2020;2021;2022": numbers that count on from column to column are names.
bool CountsAcross(std::string_view line, const TextLayout& layout) {
  constexpr int kEnough = 4;
  constexpr int kEnoughYears = 3;
  FieldCursor cursor(line, layout);
  std::string buffer;
  std::optional<double> last;
  int counted = 0;
  bool labelled = false;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const std::string_view text = FieldText(*field, layout, buffer);
    const std::optional<double> value = ParseNumber(text);
    labelled = labelled || (!value && counted == 0);
    if (!value && (counted == 0 || text.empty())) continue;
    if (!value || (last && *value != *last + 1)) return false;
    last = value;
    ++counted;
  }
  const bool years = last && *last > 1900 && *last <= 2100;
  return labelled && counted >= (years ? kEnoughYears : kEnough);
}

}  // namespace

std::size_t FirstRow(std::span<const std::string_view> lines, std::size_t from,
                     const TextLayout& layout, const std::vector<ColumnGuess>& columns) {
  bool names_seen = std::any_of(
      lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(from), [&](std::string_view line) {
        return IsDataLine(line, layout) && CountFields(line, layout, 2) > 1;
      });
  for (std::size_t i = from; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    if (i == from && CountsAcross(lines[i], layout)) continue;
    const LineKind kind = KindOf(lines[i], layout, columns);
    if (kind == LineKind::Values || (kind == LineKind::Mixed && names_seen)) return i;
    names_seen = true;
  }
  return from;
}

}  // namespace tarnwick
