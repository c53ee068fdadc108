// A fit that nothing speaks against, for tests to spoil.
#pragma once

#include "fit/judge/fit_verdict.h"

namespace tarnwick::testing {

/// Of three parameters to 100 points.
inline FitResult GoodFit() {
  FitResult result;
  result.outcome.why = StopReason::Converged;
  result.outcome.iterations = 9;
  result.outcome.changed = true;
  result.outcome.value = 2;
  result.names = {"a", "b", "c"};
  result.start = {1, 1, 1};
  result.values = {2, 3, 4};
  result.points_in_range = result.points_used = 100;
  result.statistics.points = 100;
  result.statistics.varied = 3;
  result.statistics.degrees_of_freedom = 97;
  result.statistics.sum_of_squares = 2;
  result.statistics.r_squared = result.statistics.adjusted_r_squared = 0.98;
  result.residuals.freedom = 97;
  result.statistics.correlation = {1, .2, .3, .2, 1, -.5, .3, -.5, 1};
  return result;
}

}  // namespace tarnwick::testing
