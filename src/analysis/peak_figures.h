// Peaks as spectroscopists measure them: found by how far they rise above the valleys beside them, with height, width, area and
// asymmetry. Mathematics over spans; knows no DataSet, no axis, no mark.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {

/// Values over X: rising X, finite Y above the base line, one as many as the other.
struct PeakCurve {
  std::span<const double> x;
  std::span<const double> y;
};

/// A local maximum, in its middle where it is flat, and how far it rises above the higher of the lowest valleys that part it from
/// higher ground on either side.
struct Summit {
  std::size_t index = 0;
  double prominence = 0;
};

/// Those that rise by at least `least`, in order of X. Ends are none. O(n).
std::vector<Summit> FindSummits(const PeakCurve& curve, double least);

/// What is measured of a peak, in units of X and Y.
struct PeakFigures {
  double x = 0;
  double height = 0;      ///< above the base line
  double prominence = 0;  ///< see Summit
  double width =
      kUndefined;  ///< at half the prominence below the top, between the curve's crossings; undefined without both
  double area = 0;                ///< trapezoids down to the base line, from valley to valley
  double asymmetry = kUndefined;  ///< the part of the width right of the top by that left of it
  double left_valley =
      0;  ///< X of the lowest point between this peak and the one before, or the beginning
  double right_valley = 0;
};

/// Of summits of the curve in order of X.
std::vector<PeakFigures> MeasurePeaks(const PeakCurve& curve, std::span<const Summit> summits);

}  // namespace tarnwick
