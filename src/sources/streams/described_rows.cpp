#include "sources/streams/described_rows.h"

#include <utility>

#include "base/undefined.h"
#include "data/columns/absent_column.h"
#include "data/import/column_expression.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

std::int32_t PlaceOf(TDataSupplier& supplier, const std::string& column) {
  const std::int32_t place = supplier.ColumnIndex(column);
  if (place < 0) throw AbsentColumn(column, supplier);
  return place;
}

std::optional<std::int32_t> PlaceOfErrors(TDataSupplier& supplier, const std::string& column) {
  const std::int32_t place = column.empty() ? -1 : supplier.ColumnIndex(column);
  return place < 0 ? std::nullopt : std::optional(place);
}

}  // namespace

StreamColumns DescribedColumns(const TDSInfo& info) {
  StreamColumns columns;
  std::size_t next = 1;
  if (!info.YErrorColumn.empty()) columns.y_error = next++;
  if (!info.XErrorColumn.empty()) columns.x_error = next++;
  return columns;
}

void AddDescribedRow(const TDSInfo& info, const RowValues& point, StreamRows& rows) {
  const StreamColumns columns = DescribedColumns(info);
  const std::size_t count = 1 + (columns.y_error ? 1 : 0) + (columns.x_error ? 1 : 0);
  while (rows.y.size() < count) rows.y.emplace_back(rows.x.size(), kUndefined);
  rows.x.push_back(point.x);
  rows.y[columns.y].push_back(point.y);
  if (columns.y_error) rows.y[*columns.y_error].push_back(point.y_error);
  if (columns.x_error) rows.y[*columns.x_error].push_back(point.x_error);
}

TDSInfo ReadingOf(TDSInfo info) {
  const TDSInfo none;
  info.active = true;
  info.AllRows = true;
  info.AutoRowHitFreq = false;
  info.RowSamplingFrequency = 1;
  info.KeepPoints = none.KeepPoints;
  info.Recipe = none.Recipe;
  info.RelativeSource = none.RelativeSource;
  info.GraphFolder = none.GraphFolder;
  info.x_column_index = info.y_column_index = none.x_column_index;
  info.x_error_index = info.y_error_index = none.x_error_index;
  return info;
}

DescribedReading ResolveReading(TDSInfo& info, TDataSupplier& supplier) {
  DescribedReading reading;
  RowColumns& columns = reading.columns;
  columns.x = info.x_column_index = PlaceOf(supplier, info.XDataColumn);
  columns.y = info.y_column_index = PlaceOf(supplier, info.YDataColumn);
  columns.y_error = PlaceOfErrors(supplier, info.YErrorColumn);
  columns.x_error = PlaceOfErrors(supplier, info.XErrorColumn);
  TDataSeries series;
  series.Source() = info;
  reading.transforms = CompileColumnExpressions(series, supplier.ColumnNames());
  columns.others = reading.transforms.x.columns;
  const std::vector<std::int32_t>& of_y = reading.transforms.y.columns;
  columns.others.insert(columns.others.end(), of_y.begin(), of_y.end());
  reading.others.resize(columns.others.size());
  return reading;
}

bool ReadAlike(const TDSInfo& one, const TDSInfo& other) {
  return ReadingOf(one) == ReadingOf(other);
}

}  // namespace tarnwick
