#include "app/canvas/axis_zoom.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

/// Relative length below which ticks and pixels of a range fall together.
constexpr double kShortestRange = 1e-12;
/// How far from the end a value comes to stand that was brought into range.
constexpr double kShareFromEnd = 0.1;

double Along(const AxisScale& scale, double value) {
  return scale.log ? std::log(value) : value;
}

std::optional<AxisRange> RangeAlong(const AxisScale& scale, double low, double high) {
  const AxisRange range =
      scale.log ? AxisRange{std::exp(low), std::exp(high)} : AxisRange{low, high};
  const double size = std::max(std::abs(range.min), std::abs(range.max));
  const double length = range.max - range.min;
  if (!std::isfinite(length) || !(length > size * kShortestRange)) return std::nullopt;
  if (scale.log && !(range.min > 0)) return std::nullopt;
  return range;
}

}  // namespace

std::optional<AxisRange> ZoomedRange(const AxisScale& scale, double pixel, double factor) {
  const double pivot = Along(scale, scale.ValueAt(pixel));
  const double low = pivot + (Along(scale, scale.min) - pivot) * factor;
  const double high = pivot + (Along(scale, scale.max) - pivot) * factor;
  return RangeAlong(scale, low, high);
}

std::optional<AxisRange> DraggedRange(const AxisScale& scale, double pixels) {
  if (!(scale.pixels_per_unit > 0)) return std::nullopt;
  const auto shift = static_cast<double>(pixels / scale.pixels_per_unit);
  const double signed_shift = scale.direction == PixelDirection::Rightward ? -shift : shift;
  return RangeAlong(scale, Along(scale, scale.min) + signed_shift,
                    Along(scale, scale.max) + signed_shift);
}

std::optional<AxisRange> SpannedRange(const AxisScale& scale, double first, double second) {
  const double one = Along(scale, scale.ValueAt(first));
  const double other = Along(scale, scale.ValueAt(second));
  return RangeAlong(scale, std::min(one, other), std::max(one, other));
}

std::optional<AxisRange> RangeShowing(const AxisScale& scale, double value) {
  if (value >= scale.min && value <= scale.max) return std::nullopt;
  const double low = Along(scale, scale.min);
  const double length = Along(scale, scale.max) - low;
  const double wanted = Along(scale, value);
  const double begin =
      value < scale.min ? wanted - kShareFromEnd * length : wanted - (1 - kShareFromEnd) * length;
  return RangeAlong(scale, begin, begin + length);
}

}  // namespace tarnwick
