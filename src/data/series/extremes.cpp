#include "data/series/extremes.h"

#include <cfloat>
#include <cmath>

namespace tarnwick {

namespace {

// The value rounded to single precision, or itself where that cannot hold its magnitude.
double Single(double value) {
  const double magnitude = std::abs(value);
  if (!(magnitude <= FLT_MAX) || magnitude < FLT_MIN) return value;
  return static_cast<float>(value);
}

}  // namespace

Extremes FindExtremes(const PointChain& points, const BaseLine& line) {
  if (points.Empty()) return {};
  double min = kUndefined;
  double max = kUndefined;
  for (std::size_t i = 0; i < points.ChunkCount(); ++i) {
    if (line.slope == 0) {
      const YExtremes chunk = points.ChunkExtremes(i);
      if (chunk.min > chunk.max) continue;
      Widen(min, max, Single(chunk.min - line.offset));
      Widen(min, max, Single(chunk.max - line.offset));
    } else {
      const ChunkView chunk = points.Chunk(i);
      for (std::size_t k = 0; k < chunk.x.size(); ++k) {
        Widen(min, max, Single(line.CorrectedY(chunk.x[k], chunk.y[k])));
      }
    }
  }
  return {points.Front().x, points.LastX(), min, max};
}

double SmallestY(const PointChain& points) {
  double smallest = kUndefined;
  double largest = kUndefined;
  for (std::size_t i = 0; i < points.ChunkCount(); ++i) {
    const YExtremes chunk = points.ChunkExtremes(i);
    if (chunk.min <= chunk.max) Widen(smallest, largest, chunk.min);
  }
  return smallest;
}

double SmallestPositiveX(const PointChain& points, const Extremes& extremes) {
  if (extremes.x_min > 0) return Single(extremes.x_min);
  const std::size_t index = points.UpperBound(0);
  return index < points.Size() ? Single(points.At(index).x) : extremes.x_min;
}

double SmallestPositiveY(const PointChain& points, const BaseLine& line, const Extremes& extremes) {
  if (extremes.y_min > 0) return Single(extremes.y_min);
  double smallest = kUndefined;
  points.ForEachPoint([&](double x, double y) {
    const double value = line.CorrectedY(x, y);
    if (value > 0 && !(smallest <= value)) smallest = value;
  });
  return IsUndefined(smallest) ? extremes.y_min : Single(smallest);
}

}  // namespace tarnwick
