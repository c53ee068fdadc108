// The map between data values and pixels along one axis, linear or logarithmic. Pure arithmetic on a small value.
#pragma once

namespace tarnwick {

/// Direction in which pixels grow with the value.
enum class PixelDirection { Rightward, Upward };

/// Value <-> pixel map of one axis at one size.
struct AxisScale {
  double min = 0;
  double max = 1;
  double pixels_per_unit = 1;  ///< per unit of natural logarithm when log
  double origin = 0;           ///< pixel of min (Rightward) or of max (Upward)
  bool log = false;
  PixelDirection direction = PixelDirection::Rightward;

  double ValueAt(double pixel) const;
  /// Whole pixel of a value with the stated clamping far outside (+-20000, sign rules differ by direction).
  int PixelOf(double value) const;
  /// Unrounded pixel for drawing; clamped to +-20000 in the geometrically right direction; NaN for NaN or, on a
  /// logarithmic axis, for a value <= 0.
  double Position(double value) const;
};

}  // namespace tarnwick
