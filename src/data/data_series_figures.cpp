// What a DataSet says about its points: extremes and statistics.

#include <cfloat>
#include <cmath>

#include "base/undefined.h"
#include "data/data_series.h"

namespace tarnwick {

namespace {

// The value rounded to single precision, or itself where that cannot hold its magnitude.
double Single(double value) {
  const double magnitude = std::abs(value);
  if (!(magnitude <= FLT_MAX) || magnitude < FLT_MIN) return value;
  return static_cast<float>(value);
}

void Widen(double& min, double& max, double value) {
  if (IsUndefined(value)) return;
  if (!(min <= value)) min = value;
  if (!(max >= value)) max = value;
}

}  // namespace

double TDataSeries::CorrectedY(double x, double y) const {
  SettleAutoZero();
  const double above_zero = y - settings_.ZeroValue;
  // An infinite X has a corrected Y too, as long as the base line is level.
  return settings_.BaseLineSlope == 0 ? above_zero : above_zero - settings_.BaseLineSlope * x;
}

Extremes TDataSeries::GetExtremes() const {
  EnsureExtremes();
  return extremes_;
}

void TDataSeries::EnsureExtremes() const {
  if (extremes_stale_) RecomputeExtremes();
}

void TDataSeries::SettleAutoZero() const {
  if (settings_.AutoZero) EnsureExtremes();
}

void TDataSeries::RecomputeExtremes() const {
  extremes_stale_ = false;
  extremes_ = {};
  if (points_.Empty()) return;
  if (settings_.AutoZero) {
    double smallest = kUndefined;
    double largest = kUndefined;
    for (std::size_t i = 0; i < points_.ChunkCount(); ++i) {
      const YExtremes chunk = points_.ChunkExtremes(i);
      if (chunk.min <= chunk.max) Widen(smallest, largest, chunk.min);
    }
    if (std::isfinite(smallest)) {
      settings_.ZeroValue = smallest;
      settings_.BaseLineSlope = 0;
    }
  }
  extremes_.x_min = points_.Front().x;
  extremes_.x_max = points_.LastX();
  FindYExtremes();
}

void TDataSeries::FindYExtremes() const {
  double min = kUndefined;
  double max = kUndefined;
  const double zero = settings_.ZeroValue;
  const double slope = settings_.BaseLineSlope;
  for (std::size_t i = 0; i < points_.ChunkCount(); ++i) {
    if (slope == 0) {
      const YExtremes chunk = points_.ChunkExtremes(i);
      if (chunk.min > chunk.max) continue;
      Widen(min, max, Single(chunk.min - zero));
      Widen(min, max, Single(chunk.max - zero));
    } else {
      const ChunkView chunk = points_.Chunk(i);
      for (std::size_t k = 0; k < chunk.x.size(); ++k) {
        Widen(min, max, Single(chunk.y[k] - zero - slope * chunk.x[k]));
      }
    }
  }
  extremes_.y_min = min;
  extremes_.y_max = max;
}

double TDataSeries::SmallestPositiveX() const {
  const Extremes extremes = GetExtremes();
  if (extremes.x_min > 0) return Single(extremes.x_min);
  const std::size_t index = points_.UpperBound(0);
  return index < points_.Size() ? Single(points_.At(index).x) : extremes.x_min;
}

double TDataSeries::SmallestPositiveY() const {
  const Extremes extremes = GetExtremes();
  if (extremes.y_min > 0) return Single(extremes.y_min);
  if (!smallest_positive_y_) {
    double smallest = kUndefined;
    points_.ForEachPoint([&](double x, double y) {
      const double value = CorrectedY(x, y);
      if (value > 0 && !(smallest <= value)) smallest = value;
    });
    smallest_positive_y_ = IsUndefined(smallest) ? extremes.y_min : Single(smallest);
  }
  return *smallest_positive_y_;
}

StatisticsRecord TDataSeries::XStatistics() const {
  if (!statistics_.x) {
    statistics_.x = ComputeStatistics(points_.XValues(), settings_.NumericalTolerance);
  }
  return *statistics_.x;
}

StatisticsRecord TDataSeries::YStatistics() const {
  if (!statistics_.y) {
    std::vector<double> values = points_.YValues();
    SortValues(values);
    statistics_.y = ComputeStatistics(values, settings_.NumericalTolerance);
  }
  return *statistics_.y;
}

}  // namespace tarnwick
