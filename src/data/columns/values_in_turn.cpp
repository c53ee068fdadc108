#include "data/columns/values_in_turn.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "base/quantile.h"
#include "data/columns/value_order.h"
#include "data/fields/field_value.h"
#include "data/names/numbered_names.h"
#include "data/names/text_names.h"
#include "data/text/turned_rows.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 8;
constexpr std::size_t kFewestValues = 3;  // on a line
constexpr double kNearer = 0.7;           // along a line than down the columns
constexpr double kAsNear = 2;
constexpr double kFarEnough = 0.5;
constexpr double kSurelyAsNear = 1.25;  // less than what is nearer is down the columns

using Rows = std::vector<std::vector<double>>;

/// "0", "8", "16" ahead of eight values each.
bool IsAddress(const ColumnGuess& first, std::size_t values) {
  return first.values.size() >= kFewestRows && StepsEvenly(first.Successive()) &&
         std::abs(first.values[1] - first.values[0]) == static_cast<double>(values);
}

/// The first rows, each as far as it has numbers.
Rows RowsOf(const ImportSource& source) {
  Rows rows(source.samples.empty() ? 0 : source.samples.front().size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t i = 0; i < source.samples.size(); ++i) {
      if (row >= source.samples[i].size()) break;
      const std::optional<double> value =
          ValueOfField(source.samples[i][row], source.columns[i].format);
      if (!value) break;
      rows[row].push_back(*value);
    }
  }
  std::erase_if(rows, [](const std::vector<double>& row) { return row.empty(); });
  return rows;
}

/// As many as all columns have values.
Rows WholeRowsOf(std::span<const ColumnGuess> columns) {
  std::size_t count = columns.front().values.size();
  for (const ColumnGuess& column : columns) count = std::min(count, column.values.size());
  Rows rows(count);
  for (std::size_t row = 0; row < count; ++row) {
    for (const ColumnGuess& column : columns) rows[row].push_back(column.values[row]);
  }
  return rows;
}

/// A separator behind the last value of every row makes no column.
std::span<const ColumnGuess> WithoutEmptyEnd(const ImportSource& source) {
  const std::span<const ColumnGuess> columns = source.columns;
  if (columns.empty() || source.samples.size() != columns.size()) return columns;
  const bool empty = !columns.back().has_numbers &&
                     std::ranges::all_of(source.samples.back(), &std::string::empty);
  return columns.first(columns.size() - (empty ? 1 : 0));
}

double MeanOf(std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}
double MiddleOf(std::vector<double>& values) {
  return MedianOf(values);
}

/// How far values are from their neighbours: on the line, on the next line where one ends, and below.
struct Distances {
  double along = 0;
  double over_ends = 0;
  double down = 0;
};

Distances DistancesOf(const Rows& rows, double (*typical)(std::vector<double>&)) {
  std::vector<double> along, over_ends, down;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const std::vector<double>& values = rows[row];
    for (std::size_t i = 1; i < values.size(); ++i) {
      along.push_back(std::abs(values[i] - values[i - 1]));
    }
    if (row + 1 == rows.size()) break;
    const std::vector<double>& next = rows[row + 1];
    over_ends.push_back(std::abs(next.front() - values.back()));
    for (std::size_t i = 0; i < std::min(values.size(), next.size()); ++i) {
      down.push_back(std::abs(next[i] - values[i]));
    }
  }
  if (along.empty() || down.empty()) return {};
  return {typical(along), typical(over_ends), typical(down)};
}

bool GoOn(const Distances& distances, double as_near) {
  return distances.along < kNearer * distances.down &&
         distances.over_ends <= as_near * distances.along;
}

bool IsUnnamed(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] != UnnamedColumn(static_cast<std::int32_t>(i))) return false;
  }
  return true;
}

/// A row or a few of them, so long that each is a curve; the first field may label it.
bool AreLongRows(const ImportSource& source) {
  constexpr std::size_t kFewestOfOne = 16;
  const std::size_t rows = source.samples.empty() ? 0 : source.samples.front().size();
  const auto numbers =
      static_cast<std::size_t>(std::ranges::count_if(source.columns, &ColumnGuess::has_numbers));
  const std::size_t columns = source.columns.size();
  return rows > 0 && rows <= kFewLongRows && columns >= kFewestOfOne &&
         columns >= kFieldsPerLongRow * rows && numbers + 1 >= columns;
}

/// "SPEC_380", "SPEC_385": one name but for its numbers.
bool DifferByNumbers(const std::vector<std::string>& names) {
  const auto without_digits = [](std::string name) {
    std::erase_if(name, &IsDigit);
    return name;
  };
  const std::string common = without_digits(names.front());
  return std::ranges::all_of(
      names, [&](const std::string& name) { return without_digits(name) == common; });
}

bool HasOneRow(const ImportSource& source) {
  return !source.samples.empty() && source.samples.front().size() == 1;
}

}  // namespace

ValuesInTurn HoldsValuesInTurn(const ImportSource& source) {
  const auto is_number = [](const ColumnGuess& column) {
    return column.has_numbers && !column.is_date;
  };
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const bool numbered = FindNumberedNames(names) || (HasOneRow(source) && DifferByNumbers(names));
  const bool unnamed = IsUnnamed(source);
  if (!unnamed && !numbered) return ValuesInTurn::No;
  if (AreLongRows(source)) return ValuesInTurn::Sure;
  if (!unnamed) return ValuesInTurn::No;
  const std::span<const ColumnGuess> columns = WithoutEmptyEnd(source);
  if (columns.size() < kFewestValues || !std::ranges::all_of(columns, is_number)) {
    return ValuesInTurn::No;
  }
  if (columns.size() > kFewestValues && IsAddress(columns.front(), columns.size() - 1)) {
    return ValuesInTurn::Likely;
  }
  const Rows rows = RowsOf(source), whole_rows = WholeRowsOf(columns);
  if (rows.size() < kFewestRows) return ValuesInTurn::No;
  // Curves may jump from block to block, which moves the mean and not the middle; pictures have frames of one value.
  const Distances middle = DistancesOf(rows, &MiddleOf);
  if (GoOn(middle, kSurelyAsNear) && middle.along > 0 &&
      middle.over_ends >= kFarEnough * middle.along) {
    return ValuesInTurn::Sure;
  }
  const bool likely =
      whole_rows.size() >= kFewestRows && GoOn(DistancesOf(whole_rows, &MeanOf), kAsNear);
  return likely ? ValuesInTurn::Likely : ValuesInTurn::No;
}

}  // namespace tarnwick
