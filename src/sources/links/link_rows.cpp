#include "sources/links/link_rows.h"

#include <algorithm>
#include <cmath>

#include "base/error.h"

namespace tarnwick {

LinkRows::LinkRows(const TDSInfo& info) : info_(ReadingOf(info)), row_(info.DatasourceInfo) {
  reading_ = ResolveReading(info_, row_);
  const RowColumns& columns = reading_.columns;
  const auto links = static_cast<std::int32_t>(row_.Links().size());
  if (columns.y >= links) throw Error("No link gives Y: " + row_.Describe());
  const auto hear = [&](std::int32_t column) {
    const bool is_new = std::ranges::find(heard_, column) == heard_.end();
    if (column < links && is_new) heard_.push_back(column);
  };
  hear(columns.y);
  hear(columns.x);
  if (columns.y_error) hear(*columns.y_error);
  if (columns.x_error) hear(*columns.x_error);
  std::ranges::for_each(columns.others, hear);
}

const std::string& LinkRows::LinkOf(std::int32_t column) const {
  return row_.Links()[static_cast<std::size_t>(column)];
}

std::optional<std::string> LinkRows::AddRow(StreamRows& rows) {
  row_.SetClock(clock_.Now());
  RowValues values = ReadRow(row_, info_, reading_.columns, reading_.others);
  if (reading_.columns.x == kRowNumberColumn) values.x = static_cast<double>(++count_);
  const RowValues point = PointOf(reading_.transforms, values);
  if (std::isnan(point.x) || std::isnan(point.y)) {
    ++rows.unreadable;
    return row_.TextAt(std::isnan(values.x) ? reading_.columns.x : reading_.columns.y);
  }
  AddDescribedRow(info_, point, rows);
  return std::nullopt;
}

}  // namespace tarnwick
