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

/// With g the derivatives of the model by the varied parameters, C their covariance, v the variance of one measurement and t
/// the quantile of IntervalQuantile: t sqrt(g'Cg) and t sqrt(v + g'Cg) (Seber & Wild, Nonlinear Regression, 1989, chapter
/// 5.1). Where weights follow the model's value, v is that of this value; where they follow the points' errors, that of
/// `point_errors`, the error of a measurement at each X; else, and without these, that of a point of mean weight. `model` must be
/// prepared and hold the values of `statistics`; `level` lies between 0 and 1. Widths are undefined where the model is, and
/// everywhere when there are no errors. Throws EIntegerDivision.
FitBands ComputeFitBands(TCurFit& model, const FitStatistics& statistics, std::span<const double> x,
                         double level, std::span<const double> point_errors = {});

/// sqrt(g'Cg) at one X. Throws EIntegerDivision.
double CurveDeviation(TCurFit& model, const FitStatistics& statistics, double x);

/// How many standard errors an interval of this level reaches to each side: Student's t for errors told by the residuals, the
/// normal distribution's for absolute ones. Undefined where there are no errors.
double IntervalQuantile(const FitStatistics& statistics, double level);

/// True when the fit can tell errors of its parameters at all.
bool HasErrors(const FitStatistics& statistics);

}  // namespace tarnwick
