// Smallest and largest value of a run of ordinates, at the speed of memory. Knows numbers only.
#pragma once

#include <span>

namespace tarnwick {

/// Smallest and largest stored Y of a run of points, with NaN left out (`min > max` when nothing was left).
struct YExtremes {
  double min = 0;
  double max = 0;
  bool gaps = false;  ///< some Y is NaN

  void Widen(const YExtremes& other) {
    min = other.min < min ? other.min : min;
    max = other.max > max ? other.max : max;
    gaps |= other.gaps;
  }
};

YExtremes ExtremesOf(std::span<const double> values);

}  // namespace tarnwick
