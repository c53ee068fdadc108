// Running a regression by its type: which mathematics it is, and where the result goes. Knows no DataSet.
#pragma once

#include <cstdint>
#include <string>

#include "data/points/late_points.h"
#include "data/points/point_chain.h"
#include "data/regression/regression_type.h"

namespace tarnwick {

/// What a regression is computed from beside the points.
struct RegressionTask {
  RegressionType type = RegressionType::None;
  std::int32_t steps = 0;                         ///< of the curve
  double alpha = 0;                               ///< smoothing factor, 1/window, end slope
  Duplicates duplicates = Duplicates::Forbidden;  ///< where they are allowed there is no spline
};

/// What a DataSet keeps of its regression beside the values in its points.
struct RegressionState {
  /// Filled by the spline and the smoother only: X and the value, which stands in both `y` and `regression`.
  PointChain curve;
  bool stale = true;    ///< the points or the task changed since the last run
  std::string failure;  ///< what the last run threw, which later updates do not throw again
};

/// Leaves the regression's values in the points; answers the curve. Throws Error "internal error: regression" for None,
/// "Unknown regression type", "Invalid Running Average limit".
PointChain RunRegression(PointChain& points, const RegressionTask& task);

}  // namespace tarnwick
