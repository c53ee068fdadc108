#include "sources/streams/described_rows.h"

#include <utility>

#include "base/undefined.h"

namespace tarnwick {

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

bool ReadAlike(const TDSInfo& one, const TDSInfo& other) {
  return ReadingOf(one) == ReadingOf(other);
}

}  // namespace tarnwick
