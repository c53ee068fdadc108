#include "analysis/interpolation.h"

#include <cmath>

namespace tarnwick {

Interpolation::Interpolation(const PointChain& points) : points_(points) {
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

std::optional<double> Interpolation::At(double x) const {
  if (points_.Empty() || !(x >= lowest_ && x <= highest_)) return std::nullopt;
  const std::size_t index = points_.LowerBound(x);
  const bool beyond = index == points_.Size();
  const Point right = points_.At(beyond ? index - 1 : index);
  double y = right.y;
  if (!beyond && index > 0 && right.x > x) {
    const Point left = points_.At(index - 1);
    y = left.y + (right.y - left.y) * ((x - left.x) / (right.x - left.x));
  }
  return std::isfinite(y) ? std::optional(y) : std::nullopt;
}

}  // namespace tarnwick
