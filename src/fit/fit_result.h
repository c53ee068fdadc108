// What a fit found, as plain values: why it stopped, the statistics, the verdict. Knows no model and no DataSet.
#pragma once

#include <cstdint>
#include <memory>
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

/// A part of the model that the points may do without.
struct AbsentTerm {
  std::int32_t parameter = 0;         ///< the term is gone where it is 0; an index among the varied
  std::vector<std::int32_t> through;  ///< those that act through it alone
  double gain = 0;    ///< by which the sum of squares rises without the term, as a share of it
  double chance = 1;  ///< that a term which is not there gains as much somewhere
};

/// Another value of a varied parameter with the same curve.
struct EqualValue {
  std::int32_t parameter = 0;  ///< an index among the varied
  double value = 0;
  double turn = 0;  ///< what it is so many times away; 0: it differs by its sign
};

/// Values of several varied parameters that give the same curve together.
struct EqualSet {
  struct Member {
    std::int32_t parameter = 0;  ///< an index among the varied
    double value = 0;
  };
  std::vector<Member> members;
};

/// The point that the model misses most beside the others.
struct FarthestPoint {
  double x = 0;
  double deviations = 0;  ///< of its residual, as the other points scatter
  double pull = 0;        ///< how far it moves the parameters, in errors of all of them together
  double chance = 1;      ///< that chance leads any point so far
};

/// What residuals show beside scatter: how probable as much is by chance alone. 1 where that was not tested.
struct ResidualFindings {
  std::int64_t freedom = 0;  ///< degrees of freedom of the residuals tested; 0 where none were
  bool of_several = false;   ///< those of several DataSets, one behind the other
  double alike = 1;          ///< neighbours as alike
  double alternating = 1;    ///< neighbours as opposite
  double lagged = 1;         ///< as strong correlations over several points
  double shape = 1;          ///< as much of a smooth shape
  FarthestPoint farthest;
  /// How many times more the points scatter at one end of X or of the curve's height than at the other; 1 where no more than
  /// chance has it.
  double unequal_scatter = 1;
};

/// Where the curve strays farthest from its points between two of them.
struct CurveSwing {
  double share = 0;  ///< of the curve's range at the points
  double from = 0;
  double to = 0;
  /// How often it turns from one point to the next, where these lie at even distances; else 0.
  double turns = 0;
};

/// The judgement in sentences that a user of no mathematical training understands.
struct FitVerdict {
  bool trustworthy = false;  ///< converged, all parameters determined, model tested, no point lost
  /// Not trustworthy for the one reason that the points cannot test the model.
  bool untested = false;
  std::string summary;             ///< one sentence
  std::vector<std::string> notes;  ///< further sentences, the most important first
};

struct FitOfSeveral;

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
  ResidualFindings residuals;
  CurveSwing swing;
  std::vector<std::int32_t> open;    ///< varied parameters whose errors leave their size open
  std::vector<std::int32_t> limits;  ///< whose errors reach where the curve is another one
  std::vector<std::int32_t> traded;  ///< with great errors that other parameters make up for
  std::vector<AbsentTerm> absent;    ///< terms that may not be there
  std::vector<EqualValue> equal;     ///< simpler values with the same curve
  std::vector<EqualSet> equal_sets;  ///< likewise of several parameters
  /// What a finishing Newton-type run from here would reach: its sum of squares. Empty when that was the method or not tried.
  std::optional<double> newton_sum_of_squares;
  FitVerdict verdict;
  /// Of one DataSet's share in a fit of several: the whole. Null otherwise.
  std::shared_ptr<const FitOfSeveral> together;
};

/// A fit of several DataSets at once, as each of them keeps it.
struct FitOfSeveral {
  struct Member {
    std::string data_set;
    FitVerdict verdict;
    std::int64_t points = 0;
    double sum_of_squares = 0;
    double r_squared = 0;
  };
  FitResult whole;                  ///< own parameters are named with their DataSet
  std::vector<std::string> shared;  ///< names of those with one value in all
  std::vector<Member> members;      ///< in the order of the fit
};

}  // namespace tarnwick
