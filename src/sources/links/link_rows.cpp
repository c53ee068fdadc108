#include "sources/links/link_rows.h"

#include <algorithm>
#include <cmath>

#include "base/error.h"
#include "data/import/column_expression.h"
#include "data/series/data_series.h"
#include "sources/streams/described_rows.h"

namespace tarnwick {
namespace {

std::int32_t Resolved(TLinkSupplier& row, const std::string& column) {
  const std::int32_t place = row.ColumnIndex(column);
  if (place < 0) throw Error("There is no link \"" + column + "\" in the list " + row.Describe());
  return place;
}

std::optional<std::int32_t> ResolvedErrors(TLinkSupplier& row, const std::string& column) {
  if (column.empty()) return std::nullopt;
  return Resolved(row, column);
}

}  // namespace

LinkRows::LinkRows(const TDSInfo& info) : info_(ReadingOf(info)), row_(info.DatasourceInfo) {
  columns_.x = info_.x_column_index = Resolved(row_, info_.XDataColumn);
  columns_.y = info_.y_column_index = Resolved(row_, info_.YDataColumn);
  columns_.y_error = ResolvedErrors(row_, info_.YErrorColumn);
  columns_.x_error = ResolvedErrors(row_, info_.XErrorColumn);
  TDataSeries series;
  series.Source() = info_;
  transforms_ = CompileColumnExpressions(series, row_.ColumnNames());
  columns_.others = transforms_.x.columns;
  columns_.others.insert(columns_.others.end(), transforms_.y.columns.begin(),
                         transforms_.y.columns.end());
  others_.resize(columns_.others.size());
  const auto links = static_cast<std::int32_t>(row_.Links().size());
  if (columns_.y >= links) throw Error("No link gives Y: " + row_.Describe());
  const auto hear = [&](std::int32_t column) {
    const bool is_new = std::ranges::find(heard_, column) == heard_.end();
    if (column < links && is_new) heard_.push_back(column);
  };
  hear(columns_.y);
  hear(columns_.x);
  if (columns_.y_error) hear(*columns_.y_error);
  if (columns_.x_error) hear(*columns_.x_error);
  std::ranges::for_each(columns_.others, hear);
}

const std::string& LinkRows::LinkOf(std::int32_t column) const {
  return row_.Links()[static_cast<std::size_t>(column)];
}

std::optional<std::string> LinkRows::AddRow(StreamRows& rows) {
  row_.SetClock(clock_.Now());
  RowValues values = ReadRow(row_, info_, columns_, others_);
  if (columns_.x == kRowNumberColumn) values.x = static_cast<double>(++count_);
  const RowValues point = PointOf(transforms_, values);
  if (std::isnan(point.x) || std::isnan(point.y)) {
    ++rows.unreadable;
    return row_.TextAt(std::isnan(values.x) ? columns_.x : columns_.y);
  }
  AddDescribedRow(info_, point, rows);
  return std::nullopt;
}

}  // namespace tarnwick
