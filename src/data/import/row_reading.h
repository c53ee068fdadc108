// One row of a source as the values that a description takes of it, and the point that its column expressions make of them. Knows
// suppliers and descriptions; knows no row choice and no DataSet.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "data/block_source.h"
#include "data/data_supplier.h"
#include "data/ds_info.h"
#include "data/import/loader.h"

namespace tarnwick {

/// The values of a row; NaN tells kMissingValue from kNotNumberValue.
struct RowValues {
  double x = kMissingValue;
  double y = kMissingValue;
  double y_error = kMissingValue;
  double x_error = kMissingValue;
  bool of_group = true;                  ///< the row holds the GroupValue, where there is one
  std::span<const double> columns = {};  ///< those that column expressions read beside X and Y
};

/// Where those values stand.
struct RowColumns {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::optional<std::int32_t> y_error = {};
  std::optional<std::int32_t> x_error = {};
  std::vector<std::int32_t> others = {};
};

/// How a column becomes a number. The description, whose columns are resolved, keeps formats for X and Y only: others are read
/// automatically, but with a decimal comma or grouping commas where X or Y have them.
ColumnFormat FormatOfColumn(const TDSInfo& info, std::int32_t column);
/// The same of a column of errors: they are written as the values of Y (of X) are, unless those are times. The column of the
/// values itself gives what stands behind the numbers.
ColumnFormat FormatOfYErrors(const TDSInfo& info, std::int32_t column);
ColumnFormat FormatOfXErrors(const TDSInfo& info, std::int32_t column);

/// The supplier's current row. `others` is as long as columns.others and holds their values then.
RowValues ReadRow(TDataSupplier& supplier, const TDSInfo& info, const RowColumns& columns,
                  std::vector<double>& others);

/// X and Y of the point, the other values as they are; NaN as in RowValues where an expression has no number.
RowValues PointOf(const ColumnTransforms& transforms, const RowValues& values);

}  // namespace tarnwick
