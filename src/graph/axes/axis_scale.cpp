#include "graph/axes/axis_scale.h"

#include <algorithm>
#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr double kFarAway = 20000;
/// Pixels off the plot for a value that has no place on the axis.
constexpr double kNoPlace = 19999;

/// Pixels from min (rightward) or max (upward), unrounded. Long double: max - min may exceed the doubles.
double OffsetOf(const AxisScale& scale, double value) {
  const bool rightward = scale.direction == PixelDirection::Rightward;
  const long double from = rightward ? scale.min : value;
  const long double to = rightward ? value : scale.max;
  const long double distance = scale.log ? std::log(to) - std::log(from) : to - from;
  return static_cast<double>(distance * scale.pixels_per_unit);
}

bool HasPlace(const AxisScale& scale, double value) {
  return !IsUndefined(value) && !(scale.log && value <= 0);
}

}  // namespace

double AxisScale::ValueAt(double pixel) const {
  const long double units = (static_cast<long double>(pixel) - origin) / pixels_per_unit;
  if (direction == PixelDirection::Rightward) {
    return static_cast<double>(log ? min * std::exp(units) : min + units);
  }
  return static_cast<double>(log ? max * std::exp(-units) : max - units);
}

int AxisScale::PixelOf(double value) const {
  const bool rightward = direction == PixelDirection::Rightward;
  const int start = static_cast<int>(std::lround(origin));
  double offset = rightward ? -kNoPlace : kNoPlace;
  if (HasPlace(*this, value)) offset = OffsetOf(*this, value);
  if (std::abs(offset) > kFarAway) {
    offset = std::copysign(kFarAway, rightward ? offset : -offset);
  }
  return start + static_cast<int>(std::lround(offset));
}

double AxisScale::Position(double value) const {
  if (!HasPlace(*this, value)) return kUndefined;
  return origin + std::clamp(OffsetOf(*this, value), -kFarAway, kFarAway);
}

bool IsDrawable(const AxisState& axis) {
  return std::isfinite(axis.Min) && std::isfinite(axis.Max) && axis.Min < axis.Max &&
         !(axis.LogScale && axis.Min <= 0);
}

long double PixelsPerUnit(const AxisState& axis, double length) {
  if (axis.LogScale) return length / (std::log(axis.Max) - std::log(axis.Min));
  const double usual = length / (axis.Max - axis.Min);
  if (usual > 0 && std::isfinite(usual)) return usual;
  // The longest ranges and the pixels of the shortest are beyond the doubles.
  return length / (static_cast<long double>(axis.Max) - axis.Min);
}

AxisScale ScaleOf(const AxisState& axis, AxisId id, double origin, long double pixels_per_unit) {
  const auto direction = id == AxisId::X ? PixelDirection::Rightward : PixelDirection::Upward;
  return {axis.Min, axis.Max, pixels_per_unit, origin, axis.LogScale, direction};
}

}  // namespace tarnwick
