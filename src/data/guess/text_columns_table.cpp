#include "data/guess/text_columns_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "data/fields/field_kind.h"
#include "data/guess/column_judge.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::size_t kFewestRows = 10;
constexpr std::int32_t kFewestFields = 3;
constexpr std::size_t kFewestColumns = 2;  // of numbers: one may be a key, or what is phoned
constexpr std::int32_t kMostFields = 1000;

/// The number of fields that most lines have.
std::int32_t UsualFields(Lines lines, const TextLayout& layout) {
  std::map<std::int32_t, std::size_t> counts;
  std::size_t all = 0;
  for (const std::string_view line : lines) {
    if (!IsDataLine(line, layout)) continue;
    ++counts[CountFields(line, layout, kMostFields)];
    ++all;
  }
  const auto most =
      std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; });
  return most == counts.end() || 10 * most->second < 9 * all ? 0 : most->first;
}

/// Nearly all fields of the column are values or stand for none, and most are values.
bool HoldsNumbers(Lines rows, const TextLayout& layout, std::size_t column) {
  std::size_t values = 0, none = 0;
  std::string buffer;
  for (const std::string_view row : rows) {
    const auto field = FieldAt(row, layout, static_cast<std::int32_t>(column));
    const FieldKind kind =
        field ? KindOfField(FieldText(*field, layout, buffer)) : FieldKind::Empty;
    values += kind == FieldKind::Number || kind == FieldKind::Date ? 1 : 0;
    none += kind == FieldKind::Empty || kind == FieldKind::Placeholder ? 1 : 0;
  }
  return 10 * (values + none) >= 9 * rows.size() && 4 * values >= 3 * rows.size();
}

/// A few hundred of these, from all over.
std::vector<std::string_view> SomeOf(Lines rows) {
  constexpr std::size_t kMost = 300;
  const std::size_t step = rows.size() / kMost + 1;
  std::vector<std::string_view> some;
  for (std::size_t i = 0; i < rows.size(); i += step) some.push_back(rows[i]);
  return some;
}

/// How many columns hold numbers or dates that tell more than how many rows there are.
std::size_t ColumnsOfNumbers(Lines rows, const TextLayout& layout) {
  const std::vector<ColumnGuess> columns = JudgeColumns(rows, layout);
  std::size_t count = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const bool tells =
        columns[i].has_numbers && !columns[i].IsConstant() && !columns[i].CountsRows();
    count += tells && HoldsNumbers(rows, layout, i) ? 1 : 0;
  }
  return count;
}

}  // namespace

std::optional<FoundTable> FindTableOfTexts(Lines lines, const TextLayout& layout) {
  if (layout.merge || layout.ByPlace() || layout.IsSeparator(' ')) return std::nullopt;
  const std::int32_t fields = UsualFields(lines, layout);
  if (fields < kFewestFields) return std::nullopt;
  FoundTable table{.fields = fields};
  std::vector<std::string_view> rows;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    if (CountFields(lines[i], layout, kMostFields) != fields) {
      table.odd_rows += rows.empty() ? 0 : 1;
      continue;
    }
    if (rows.empty()) table.first = i;
    table.behind = i + 1;
    rows.push_back(lines[i]);
  }
  // The first may name the columns.
  if (rows.size() <= kFewestRows ||
      ColumnsOfNumbers(SomeOf(std::span(rows).subspan(1)), layout) < kFewestColumns) {
    return std::nullopt;
  }
  table.rows = rows.size();
  table.weight = static_cast<double>(rows.size());
  return table;
}

}  // namespace tarnwick
