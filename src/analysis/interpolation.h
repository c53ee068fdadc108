// The value of a DataSet between its points, on the straight line through the two neighbours. Knows points; no base line.
#pragma once

#include <optional>

#include "data/points/point_chain.h"

namespace tarnwick {

/// Beyond either end the outermost point still answers for this part of the distance to its neighbour.
inline constexpr double kReachBeyondEnds = 0.01;

/// Stored Y of a chain at any X. The chain outlives it.
class Interpolation {
 public:
  explicit Interpolation(const PointChain& points);

  /// Nothing where the points do not reach, or where one that goes into it has no value. Of several points at `x` the first
  /// answers.
  std::optional<double> At(double x) const;

 private:
  const PointChain& points_;
  double lowest_ = 0;  // as far as the ends answer
  double highest_ = 0;
};

}  // namespace tarnwick
