// The base line of a DataSet, and the extremes of its points above it. Mathematics over a chain; knows no DataSet.
#pragma once

#include "base/undefined.h"
#include "data/points/point_chain.h"

namespace tarnwick {

/// The line offset + slope * X.
struct BaseLine {
  double offset = 0;
  double slope = 0;  ///< Y units per X unit

  /// Y above the base line. An infinite X has one too, as long as the base line is level.
  double CorrectedY(double x, double y) const {
    const double above_zero = y - offset;
    return slope == 0 ? above_zero : above_zero - slope * x;
  }
};

/// Smallest and largest X and corrected Y of a DataSet; all 0 when it has no points.
struct Extremes {
  double x_min = 0, x_max = 0, y_min = 0, y_max = 0;
  bool operator==(const Extremes&) const = default;
};

/// Widens the bounds by a value, also when they are still undefined. An undefined value widens nothing.
inline void Widen(double& min, double& max, double value) {
  if (IsUndefined(value)) return;
  if (!(min <= value)) min = value;
  if (!(max >= value)) max = value;
}

/// Y in single precision where that can hold them, undefined Y left out; Y extremes are undefined when there is no other.
Extremes FindExtremes(const PointChain& points, const BaseLine& line);

/// The smallest stored Y; undefined when there is none.
double SmallestY(const PointChain& points);

/// The smallest X (or corrected Y) above 0 of points with these extremes, in single precision where that can hold it; the
/// minimum when there is none.
double SmallestPositiveX(const PointChain& points, const Extremes& extremes);
double SmallestPositiveY(const PointChain& points, const BaseLine& line, const Extremes& extremes);

}  // namespace tarnwick
