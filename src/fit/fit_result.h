// What a fit found, as plain values: why it stopped, the statistics, the verdict. Knows no model and no DataSet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/undefined.h"
#include "fit/fit_weighting.h"
#include "fit/minimise.h"

namespace tarnwick {

/// Statistics of a least-squares fit at its last parameter values. Sums are of weighted residuals. An undefined value (NaN)
/// stands where the data cannot tell.
struct FitStatistics {
  FitWeighting weighting = Settled({}, false);  ///< as it was done; loss_scale as it was in the end
  std::int64_t points = 0;                      ///< that entered the sum
  std::int32_t varied = 0;                      ///< parameters that were varied, k
  std::int64_t degrees_of_freedom = 0;          ///< points - k; not negative
  double sum_of_squares = 0;                    ///< of the residuals
  double residual_deviation = 0;                ///< sqrt(sum_of_squares / degrees_of_freedom)
  double reduced_chi_squared = 0;               ///< sum_of_squares / degrees_of_freedom
  /// That chance makes the sum of squares greater; where errors are not absolute, undefined.
  double chi_squared_probability = kUndefined;
  double r_squared = 0;
  double adjusted_r_squared = 0;
  double aic = 0;
  double aicc = 0;
  double bic = 0;
  /// Of neighbouring residuals along X: near 0 where they scatter, near 1 where they follow a pattern.
  double residual_correlation = 0;
  double unit_variance = 0;  ///< that a measurement of weight 1 has: 1 where errors are absolute
  double mean_variance = 1;  ///< of the points' own: n / sum of the squares of their weights
  std::vector<double> standard_errors;  ///< k, in the order of the varied parameters
  std::vector<double> covariance;       ///< k x k, row by row
  std::vector<double> correlation;      ///< k x k, row by row
  /// k x k: the covariance within the directions that the data determine, zero along the others. Equal to `covariance`
  /// when all are determined; the bands of the curve need no more.
  std::vector<double> determined_covariance;
};

/// A direction in the space of the varied parameters that the data do not determine: which parameters trade against each
/// other, by the share each has in it.
struct SingularDirection {
  double relative_singular_value = 0;    ///< of the scaled Jacobian, to the greatest
  std::vector<std::int32_t> parameters;  ///< indices among the varied ones, greatest share first
};

/// A parameter that an expression of others gives.
struct TiedParameter {
  std::string name;
  double value = 0;
  double error = 0;  ///< from those of the others; undefined where they do not tell
};

/// The judgement in sentences that a user of no mathematical training understands.
struct FitVerdict {
  bool trustworthy = false;        ///< converged, all parameters determined, no point lost
  std::string summary;             ///< one sentence
  std::vector<std::string> notes;  ///< further sentences, the most important first
};

struct FitResult {
  MinimiseOutcome outcome;
  std::vector<std::string> names;  ///< of the varied parameters, in order
  std::vector<double> start;       ///< their values before
  std::vector<double>
      values;  ///< their values now: those of the outcome, or the start when it failed
  std::int64_t points_in_range = 0;   ///< between the margins
  std::int64_t points_used = 0;       ///< after thinning, undefined ones among them
  std::int64_t undefined_points = 0;  ///< used points where the model or Y has no value at the end
  std::int64_t points_without_error = 0;   ///< left out because they have none above 0 to weigh by
  std::int64_t points_without_weight = 0;  ///< where the model's value gives no weight at the end
  FitStatistics statistics;
  std::vector<SingularDirection> singular_directions;
  std::vector<std::int32_t>
      unmoved;  ///< varied parameters on which the sum of squares does not depend at all
  std::vector<std::int32_t> at_bound;  ///< varied parameters that stand at one of their bounds
  std::vector<TiedParameter> tied;
  /// What a finishing Newton-type run from here would reach: its sum of squares. Empty when that was the method or not tried.
  std::optional<double> newton_sum_of_squares;
  FitVerdict verdict;
};

}  // namespace tarnwick
