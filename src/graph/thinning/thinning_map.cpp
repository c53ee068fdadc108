#include <cmath>
#include <limits>

#include "graph/thinning/thinning.h"

namespace tarnwick {
namespace {

constexpr long double kLeastSlope = 1e-304L;
constexpr long double kMostSlope = 1e300L;

}  // namespace

PixelMap::PixelMap(const AxisScale& scale, double factor, double offset) : log_(scale.log) {
  const bool rightward = scale.direction == PixelDirection::Rightward;
  const double reference = rightward ? scale.min : scale.max;
  reference_ = log_ ? std::log(reference) : reference;
  origin_ = scale.origin * factor + offset;
  long double slope = (rightward ? scale.pixels_per_unit : -scale.pixels_per_unit) * factor;
  // Differences within a range this long may exceed the doubles, while its ends are not far from zero beside its length.
  if (!log_ && std::abs(slope) < kLeastSlope) {
    origin_ = static_cast<double>(origin_ - reference_ * slope);
    reference_ = 0;
  }
  if (std::abs(slope) > kMostSlope) {
    magnifier_ = 0x1p64;
    slope /= magnifier_;
  }
  slope_ = static_cast<double>(slope);
}

double PixelMap::LogOf(double value) {
  return value > 0 ? std::log(value) : std::numeric_limits<double>::quiet_NaN();
}

bool PixelMap::Usable() const {
  return std::isfinite(reference_) && std::isfinite(origin_) && std::isfinite(slope_) &&
         slope_ != 0;
}

}  // namespace tarnwick
