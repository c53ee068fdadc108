// Statistics of a least-squares fit from what one pass over its points left: errors, correlations, quality figures, and
// what the data do not determine. Knows no model, no points and no sentences.
//
// With R the triangle of the Jacobian, D the lengths of its columns and R inv(D) = U S V' (singular values s), the covariance
// is  rss/dof * inv(D) V inv(S)^2 V' inv(D)  (Seber & Wild, Nonlinear Regression, 1989, chapters 2.1 and 3.3). A direction
// (column of V) whose s is lost in rounding beside the greatest is one that the data do not determine.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// The points that entered, as far as the statistics need them.
struct FittedPoints {
  std::int64_t count = 0;                                               ///< that have a residual
  double sum_about_mean = 0;                                            ///< of (y - mean y)^2
  double derivative_accuracy = std::numeric_limits<double>::epsilon();  ///< relative
};

struct FitFigures {
  FitStatistics statistics;
  std::vector<SingularDirection> singular_directions;
  std::vector<std::int32_t> unmoved;
};

/// Error model: unit weights, errors scaled by the residuals. With n points, k varied parameters, dof = n - k:
///   R^2 = 1 - rss/tss,  adjusted R^2 = 1 - (rss/dof)/(tss/(n-1)),
///   AIC = n ln(rss/n) + 2(k+1),  BIC = n ln(rss/n) + (k+1) ln n  (Burnham & Anderson, Model Selection, 2002, chapter 2.2:
///   normal errors whose variance counts as a parameter; the constant n ln(2 pi)+n is left out).
/// Figures that do not exist (dof = 0, tss = 0, a parameter that is not determined) are undefined.
FitFigures ComputeFitFigures(const ReducedJacobian& jacobian, const FittedPoints& points);

/// A constant would do about as well: the F ratio of what the model explains, for each parameter beyond one, to what it leaves
/// is below 3, as chance lets it be (Seber & Wild 1989, chapter 5.3). False when all Y are equal and for a constant itself.
bool NoBetterThanMean(const FitStatistics& statistics);

/// From this correlation on an error of one parameter is made up for by another.
inline constexpr double kStrongCorrelation = 0.99;

/// Indices of varied parameters that the data hardly determine: their standard errors exceed their values, and each is strongly
/// correlated with another.
std::vector<std::int32_t> HardlyDetermined(const FitStatistics& statistics,
                                           std::span<const double> values);

/// Sum of (y - mean y)^2 in two passes.
double SumAboutMean(std::span<const double> y);

}  // namespace tarnwick
