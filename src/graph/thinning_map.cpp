#include <algorithm>
#include <cmath>
#include <limits>

#include "graph/thinning.h"

namespace tarnwick {

PixelMap::PixelMap(const AxisScale& scale, double factor, double offset) : log_(scale.log) {
  const bool rightward = scale.direction == PixelDirection::Rightward;
  const double reference = rightward ? scale.min : scale.max;
  reference_ = log_ ? std::log(reference) : reference;
  origin_ = scale.origin * factor + offset;
  slope_ = (rightward ? scale.pixels_per_unit : -scale.pixels_per_unit) * factor;
}

double PixelMap::At(double value) const {
  if (log_) value = value > 0 ? std::log(value) : std::numeric_limits<double>::quiet_NaN();
  // The difference of two huge values may overflow; an infinity lands on the right side all the same.
  const double pixel = origin_ + (value - reference_) * slope_;
  return pixel < -kFarPixel ? -kFarPixel : pixel > kFarPixel ? kFarPixel : pixel;
}

double PixelMap::ValueAt(double pixel) const {
  const double value = reference_ + (pixel - origin_) / slope_;
  return log_ ? std::exp(value) : value;
}

bool PixelMap::Usable() const {
  return std::isfinite(reference_) && std::isfinite(origin_) && std::isfinite(slope_) &&
         slope_ != 0;
}

}  // namespace tarnwick
