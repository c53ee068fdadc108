#include "data/import/row_reading.h"

#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

double ReadCode(TDataSupplier& supplier, std::int32_t column, ColumnFormat format) {
  if (const std::optional<double> value = supplier.ReadValue(column, format)) return *value;
  return supplier.HasValue(column) ? kNotNumberValue : kMissingValue;
}

double Transformed(const ColumnTransform& transform, const RowValues& values, double raw,
                   std::span<const double> columns) {
  if (!transform) return raw;
  for (const double column : columns) {
    if (std::isnan(column)) return column;
  }
  return transform.value(values.x, values.y, columns).value_or(kNotNumberValue);
}

}  // namespace

ColumnFormat FormatOfColumn(const TDSInfo& info, std::int32_t column) {
  if (column == info.x_column_index) return info.XFormat;
  if (column == info.y_column_index) return info.YFormat;
  for (const ColumnFormat format : {info.XFormat, info.YFormat}) {
    if (format == ColumnFormat::DecimalComma || format == ColumnFormat::GroupedThousands)
      return format;
  }
  return ColumnFormat::Automatic;
}

namespace {

ColumnFormat FormatOfErrors(const TDSInfo& info, std::int32_t column, std::int32_t value_column,
                            ColumnFormat value) {
  using enum ColumnFormat;
  if (value == NumberWithUnit && column == value_column) return Uncertainty;
  const bool number = value == Number || value == DecimalComma || value == GroupedThousands ||
                      value == NumberWithUnit || value == ScaledUnit || value == Factor;
  return number ? value : FormatOfColumn(info, column);
}

}  // namespace

ColumnFormat FormatOfYErrors(const TDSInfo& info, std::int32_t column) {
  return FormatOfErrors(info, column, info.y_column_index, info.YFormat);
}

ColumnFormat FormatOfXErrors(const TDSInfo& info, std::int32_t column) {
  return FormatOfErrors(info, column, info.x_column_index, info.XFormat);
}

RowValues ReadRow(TDataSupplier& supplier, const TDSInfo& info, const RowColumns& columns,
                  std::vector<double>& others) {
  RowValues values;
  values.x = ReadCode(supplier, columns.x, info.XFormat);
  // Where X stands for no value it tells whether Y does, too.
  if (!IsUndefined(values.x) || IsMissingValue(values.x))
    values.y = ReadCode(supplier, columns.y, info.YFormat);
  if (columns.y_error) {
    const ColumnFormat format = FormatOfYErrors(info, *columns.y_error);
    values.y_error = ReadCode(supplier, *columns.y_error, format);
  }
  if (columns.x_error) {
    const ColumnFormat format = FormatOfXErrors(info, *columns.x_error);
    values.x_error = ReadCode(supplier, *columns.x_error, format);
  }
  for (std::size_t i = 0; i < columns.others.size(); ++i) {
    others[i] = ReadCode(supplier, columns.others[i], FormatOfColumn(info, columns.others[i]));
  }
  values.columns = others;
  return values;
}

RowValues PointOf(const ColumnTransforms& transforms, const RowValues& values) {
  const std::size_t x_columns = transforms.x.columns.size();
  RowValues point = values;
  point.x = Transformed(transforms.x, values, values.x, values.columns.first(x_columns));
  point.y = Transformed(transforms.y, values, values.y, values.columns.subspan(x_columns));
  return point;
}

}  // namespace tarnwick
