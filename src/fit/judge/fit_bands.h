// The fitted curve with its confidence and prediction bands. Knows the model and the fit's statistics; no points and no
// drawing.
#pragma once

#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

/// One number per X. The band reaches from value - half width to value + half width.
struct FitBands {
  std::vector<double> value;
  std::vector<double> confidence;  ///< half width: where the curve lies at the level
  std::vector<double> prediction;  ///< half width: where a further measurement lies at the level
};

/// With g the derivatives of the model by the varied parameters, C their covariance, s the residual deviation and t the
/// two-sided quantile of Student's distribution: t sqrt(g'Cg) and t sqrt(s^2 + g'Cg) (Seber & Wild, Nonlinear Regression,
/// 1989, chapter 5.1). `model` must be prepared and hold the values of `statistics`; `level` lies between 0 and 1. Widths are
/// undefined where the model is, and everywhere when there are no degrees of freedom. Throws EIntegerDivision.
FitBands ComputeFitBands(TCurFit& model, const FitStatistics& statistics, std::span<const double> x,
                         double level);

/// The value that Student's t with so many degrees of freedom stays below in size with probability `level`; undefined for no
/// degrees of freedom or a level outside 0 to 1.
double StudentQuantile(std::int64_t degrees_of_freedom, double level);

}  // namespace tarnwick
