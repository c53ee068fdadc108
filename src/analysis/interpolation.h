// The value of a DataSet between its points, on the straight line through the two neighbours, and where that line has a value.
// Knows points; no base line.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {

/// Beyond either end the outermost point still answers for this part of the distance to its neighbour.
inline constexpr double kReachBeyondEnds = 0.01;

/// Which of a point's values is meant.
enum class PointValue { Y, Regression };

/// Between two neighbours of a chain: y = left + share (right - left). Both are one where a single point answers.
struct Between {
  Point left;
  Point right;
  double share = 0;
};

/// Values of a chain at any X. The chain outlives it.
class Interpolation {
 public:
  explicit Interpolation(const PointChain& points, PointValue value = PointValue::Y);

  /// Nothing where the points do not reach, or where one that goes into it has no value. Of several points at `x` the first
  /// answers.
  std::optional<double> At(double x) const;
  /// What goes into the value at `x`; nothing where the points do not reach.
  std::optional<Between> Around(double x) const;

 private:
  const PointChain& points_;
  PointValue value_;
  double lowest_ = 0;  // as far as the ends answer
  double highest_ = 0;
};

/// The first X in order, `most` at most, at which the line through the points, less offset and slope, has the value `y`.
struct Level {
  double y = 0;
  double offset = 0;  ///< of the base line
  double slope = 0;
};
std::vector<double> CrossingsOf(const PointChain& points, PointValue value, const Level& level,
                                std::size_t most);

}  // namespace tarnwick
