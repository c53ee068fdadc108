// Statistics of a least-squares fit from what one pass over its points left: errors, correlations, quality figures, and
// what the data do not determine. Knows no model, no points and no sentences.
//
// With R the triangle of the Jacobian, D the lengths of its columns and R inv(D) = U S V' (singular values s), the covariance
// is  rss/dof * inv(D) V inv(S)^2 V' inv(D)  (Seber & Wild, Nonlinear Regression, 1989, chapters 2.1 and 3.3). A direction
// (column of V) whose s is lost in rounding beside the greatest is one that the data do not determine.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

/// The points that entered, as far as the statistics need them.
struct FittedPoints {
  std::int64_t count = 0;     ///< that have a residual
  double sum_about_mean = 0;  ///< of (y - mean y)^2, weighted
  double derivative_accuracy = std::numeric_limits<double>::epsilon();  ///< relative
  FitWeighting weighting = Settled({}, false);                          ///< no Automatic
  double mean_variance = 1;                                             ///< as in FitStatistics
  /// What takes the place of the residuals' variance under a robust loss: for the errors, and for one measurement.
  std::optional<double> robust_variance = {};
  double robust_measurement = 0;
  /// Of weights that follow the model: the deviance of counts, the sum of ln f^2 of relative ones.
  double likelihood_term = 0;
};

struct FitFigures {
  FitStatistics statistics;
  std::vector<SingularDirection> singular_directions;
  std::vector<std::int32_t> unmoved;
};

/// With n points, k varied parameters, dof = n - k, sums of weighted squares, s^2 = rss/dof or 1 for absolute errors:
///   R^2 = 1 - rss/tss,  adjusted R^2 = 1 - (rss/dof)/(tss/(n-1))  (weighted: Willett & Singer, Am. Stat. 42 (1988), 236),
///   -2 ln L = n ln(rss/n), for absolute errors rss; for counts the deviance; for relative errors with the sum of ln f^2,
///   AIC = -2 ln L + 2K,  BIC = -2 ln L + K ln n,  AICc = AIC + 2K(K+1)/(n-K-1)  with K = k, one more where the variance is
///   told by the residuals (Burnham & Anderson, Model Selection, 2002, chapters 2.2 and 2.4; constants of the data left out).
/// Figures that do not exist (dof = 0, tss = 0, a parameter that is not determined, a likelihood under a robust loss) are
/// undefined.
FitFigures ComputeFitFigures(const ReducedJacobian& jacobian, const FittedPoints& points);

/// A constant would do about as well: the F ratio of what the model explains, for each parameter beyond one, to what it leaves
/// is below 3, as chance lets it be (Seber & Wild 1989, chapter 5.3). False when all Y are equal and for a constant itself.
bool NoBetterThanMean(const FitStatistics& statistics);

/// From this correlation on an error of one parameter is made up for by another.
inline constexpr double kStrongCorrelation = 0.99;

/// Indices of varied parameters that the data hardly determine: their standard errors exceed `part` of their values, and each is
/// strongly correlated with another.
std::vector<std::int32_t> HardlyDetermined(const FitStatistics& statistics,
                                           std::span<const double> values, double part);

}  // namespace tarnwick
