#include <cmath>
#include <limits>

#include "graph/thinning/thinning.h"

namespace tarnwick {

PixelMap::PixelMap(const AxisScale& scale, double factor, double offset) : log_(scale.log) {
  const bool rightward = scale.direction == PixelDirection::Rightward;
  const double reference = rightward ? scale.min : scale.max;
  reference_ = log_ ? std::log(reference) : reference;
  origin_ = scale.origin * factor + offset;
  slope_ = (rightward ? scale.pixels_per_unit : -scale.pixels_per_unit) * factor;
}

double PixelMap::LogOf(double value) {
  return value > 0 ? std::log(value) : std::numeric_limits<double>::quiet_NaN();
}

bool PixelMap::Usable() const {
  return std::isfinite(reference_) && std::isfinite(origin_) && std::isfinite(slope_) &&
         slope_ != 0;
}

}  // namespace tarnwick
