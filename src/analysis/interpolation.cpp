#include "analysis/interpolation.h"

#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

double ValueOf(const Point& point, PointValue value) {
  return value == PointValue::Y ? point.y : point.regression;
}

}  // namespace

Interpolation::Interpolation(const PointChain& points, PointValue value)
    : points_(points), value_(value) {
  if (points.Empty()) return;
  lowest_ = points.Front().x;
  highest_ = points.LastX();
  const std::size_t size = points.Size();
  if (size < 2) return;
  const double first_step = points.At(1).x - lowest_;
  const double last_step = highest_ - points.At(size - 2).x;
  lowest_ -= kReachBeyondEnds * first_step;
  highest_ += kReachBeyondEnds * last_step;
}

std::optional<Between> Interpolation::Around(double x) const {
  if (points_.Empty() || !(x >= lowest_ && x <= highest_)) return std::nullopt;
  const std::size_t index = points_.LowerBound(x);
  const bool beyond = index == points_.Size();
  const Point right = points_.At(beyond ? index - 1 : index);
  if (beyond || index == 0 || !(right.x > x)) return Between{right, right, 0};
  const Point left = points_.At(index - 1);
  return Between{left, right, (x - left.x) / (right.x - left.x)};
}

std::optional<double> Interpolation::At(double x) const {
  const std::optional<Between> found = Around(x);
  if (!found) return std::nullopt;
  const double left = ValueOf(found->left, value_);
  const double right = ValueOf(found->right, value_);
  const double y = found->share == 0 ? left : left + (right - left) * found->share;
  return std::isfinite(y) ? std::optional(y) : std::nullopt;
}

std::vector<double> CrossingsOf(const PointChain& points, PointValue value, const Level& level,
                                std::size_t most) {
  std::vector<double> found;
  double last_x = 0;
  double last = kUndefined;  // above the level
  for (std::size_t i = 0; i < points.ChunkCount() && found.size() < most; ++i) {
    const ChunkView chunk = points.Chunk(i);
    const std::span<const double> values = value == PointValue::Y ? chunk.y : chunk.regression;
    for (std::size_t k = 0; k < values.size() && found.size() < most; ++k) {
      const double x = chunk.x[k];
      const double above = values[k] - level.offset - level.slope * x - level.y;
      if (above == 0) {
        found.push_back(x);
      } else if (last * above < 0) {
        found.push_back(last_x + (x - last_x) * (last / (last - above)));
      }
      last_x = x;
      last = above;
    }
  }
  return found;
}

}  // namespace tarnwick
