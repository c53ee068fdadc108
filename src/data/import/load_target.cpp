#include "data/import/load_target.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {
namespace {

constexpr std::size_t kPointsPerFlush = 8192;

bool RisesFrom(const PointChain& points, std::span<const double> x) {
  if (x.empty()) return true;
  return (points.Empty() || x.front() >= points.LastX()) && std::is_sorted(x.begin(), x.end());
}

/// What a column expression makes of a row; NaN as in RowValues where that is no number.
double Transformed(const ColumnTransform& transform, const RowValues& values, double raw,
                   std::span<const double> columns) {
  if (!transform) return raw;
  for (const double column : columns) {
    if (std::isnan(column)) return column;
  }
  return transform.value(values.x, values.y, columns).value_or(kNotNumberValue);
}

}  // namespace

SkipReason ReasonOf(const RowValues& values) {
  if (std::isnan(values.x)) {
    return IsMissingValue(values.x) ? SkipReason::XMissing : SkipReason::XNotNumber;
  }
  return IsMissingValue(values.y) ? SkipReason::YMissing : SkipReason::YNotNumber;
}

LoadTarget::LoadTarget(TDataSeries& series, std::optional<std::int64_t> rows,
                       std::int32_t point_limit, ColumnTransforms transforms)
    : series_(series),
      chooser_(series.Source(), rows, point_limit),
      transforms_(std::move(transforms)),
      columns_(transforms_.x.columns) {
  columns_.insert(columns_.end(), transforms_.y.columns.begin(), transforms_.y.columns.end());
  series_.Clear();
  report_.loaded = true;
}

std::int64_t LoadTarget::Points() const {
  return series_.PointCount() + static_cast<std::int64_t>(x_.size());
}

bool LoadTarget::TakesColumns() const {
  return chooser_.TakesAll() && !transforms_.x && !transforms_.y;
}

void LoadTarget::TakeColumns(std::span<const double> x, std::span<const double> y) {
  const auto rows = static_cast<std::int64_t>(x.size());
  chooser_.PassTaken(rows);
  report_.rows_read += rows;
  added_ += rows;
  if (x_.empty() && RisesFrom(series_.Points(), x)) {
    series_.AddPoints(x, y);
    return;
  }
  x_.insert(x_.end(), x.begin(), x.end());
  y_.insert(y_.end(), y.begin(), y.end());
  FlushWhenWorthwhile();
}

std::optional<SkipReason> LoadTarget::AddPoint(const RowValues& values) {
  const std::size_t x_columns = transforms_.x.columns.size();
  const RowValues point{
      Transformed(transforms_.x, values, values.x, values.columns.first(x_columns)),
      Transformed(transforms_.y, values, values.y, values.columns.subspan(x_columns))};
  if (std::isnan(point.x) || std::isnan(point.y)) return ReasonOf(point);
  ++added_;
  x_.push_back(point.x);
  y_.push_back(point.y);
  if (x_.size() % kPointsPerFlush == 0) FlushWhenWorthwhile();
  return std::nullopt;
}

/// Rising points go in as they come. Others wait until they are as many as half of those already there: each batch is
/// merged into the whole, so few large ones cost less.
void LoadTarget::FlushWhenWorthwhile() {
  const auto many = static_cast<std::size_t>(series_.PointCount()) / 2;
  if (x_.size() >= many || RisesFrom(series_.Points(), x_)) Flush();
}

void LoadTarget::Flush() {
  series_.AddPoints(x_, y_);
  x_.clear();
  y_.clear();
}

void LoadTarget::Finish() {
  if (!x_.empty()) Flush();
  report_.points = series_.PointCount();
  report_.replaced = added_ - report_.points;
  report_.sampled_every = chooser_.Every();
}

}  // namespace tarnwick
