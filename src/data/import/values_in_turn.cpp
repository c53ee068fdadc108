#include "data/import/values_in_turn.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "data/import/value_order.h"
#include "data/text/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 8;
constexpr std::size_t kFewestValues = 3;  // on a line
constexpr double kNearer = 0.7;           // along a line than down the columns
constexpr double kAsNear = 2;

using Columns = std::span<const ColumnGuess>;

std::size_t RowsOf(Columns columns) {
  std::size_t rows = columns.front().values.size();
  for (const ColumnGuess& column : columns) rows = std::min(rows, column.values.size());
  return rows;
}

/// "0", "8", "16" ahead of eight values each.
bool IsAddress(const ColumnGuess& first, std::size_t values) {
  return first.values.size() >= kFewestRows && StepsEvenly(first.values) &&
         std::abs(first.values[1] - first.values[0]) == static_cast<double>(values);
}

/// How far values are from their neighbours on the line, on the next line where one ends, and below.
struct Distances {
  double along = 0;
  double over_ends = 0;
  double down = 0;
};

Distances DistancesOf(Columns columns, std::size_t rows) {
  Distances sum;
  const auto value = [columns](std::size_t column, std::size_t row) {
    return columns[column].values[row];
  };
  const std::size_t count = columns.size();
  for (std::size_t row = 0; row + 1 < rows; ++row) {
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) sum.along += std::abs(value(i, row) - value(i - 1, row));
      sum.down += std::abs(value(i, row + 1) - value(i, row));
    }
    sum.over_ends += std::abs(value(0, row + 1) - value(count - 1, row));
  }
  const auto steps = static_cast<double>(rows - 1);
  return {sum.along / (steps * static_cast<double>(count - 1)), sum.over_ends / steps,
          sum.down / (steps * static_cast<double>(count))};
}

bool IsUnnamed(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] != UnnamedColumn(static_cast<std::int32_t>(i))) return false;
  }
  return true;
}

}  // namespace

bool HoldsValuesInTurn(const ImportSource& source) {
  const Columns columns = source.columns;
  const auto is_number = [](const ColumnGuess& column) {
    return column.has_numbers && !column.is_date;
  };
  if (columns.size() < kFewestValues || !std::ranges::all_of(columns, is_number)) return false;
  if (!IsUnnamed(source) || RowsOf(columns) < kFewestRows) return false;
  if (columns.size() > kFewestValues && IsAddress(columns.front(), columns.size() - 1)) return true;
  const Distances distances = DistancesOf(columns, RowsOf(columns));
  return distances.along < kNearer * distances.down &&
         distances.over_ends <= kAsNear * distances.along;
}

}  // namespace tarnwick
