// The map between data values and pixels along one axis, linear or logarithmic. Pure arithmetic on a small value.
#pragma once

#include "graph/axes/axis_state.h"

namespace tarnwick {

/// Direction in which pixels grow with the value.
enum class PixelDirection { Rightward, Upward };

/// Value <-> pixel map of one axis at one size.
struct AxisScale {
  double min = 0;
  double max = 1;
  /// Per unit of natural logarithm when log. Wider than double: the shortest ranges exceed those.
  long double pixels_per_unit = 1;
  double origin = 0;  ///< pixel of min (Rightward) or of max (Upward)
  bool log = false;
  PixelDirection direction = PixelDirection::Rightward;

  double ValueAt(double pixel) const;
  /// Whole pixel of a value with the stated clamping far outside (+-20000, sign rules differ by direction).
  int PixelOf(double value) const;
  /// Unrounded pixel for drawing; clamped to +-20000 in the geometrically right direction; NaN for NaN or, on a
  /// logarithmic axis, for a value <= 0.
  double Position(double value) const;
};

/// False for a range that nothing can be drawn against: not rising, not finite, or a logarithmic one that reaches zero.
bool IsDrawable(const AxisState& axis);

/// Pixels per unit of a drawable range over `length` pixels.
long double PixelsPerUnit(const AxisState& axis, double length);

/// The map of axis `id`'s range as it stands; see AxisScale for `origin`.
AxisScale ScaleOf(const AxisState& axis, AxisId id, double origin, long double pixels_per_unit);

}  // namespace tarnwick
