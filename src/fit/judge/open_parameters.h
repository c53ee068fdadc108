// Which parameters the data leave open though they have errors: where the model's curve does not follow them as far as their
// errors reach. Knows residuals; words nothing.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// Indices of varied parameters whose errors leave their size open. Twice the error of one, up or down, with the others going
/// along as the covariance has it, should change the curve by twice a deviation (Bates & Watts, Nonlinear Regression Analysis
/// and Its Applications, 1988, chapter 6); where it does so by less than half of that, the sum of squares does not bound the
/// parameter: a decay time of 1e7 +- 3e8, but not a place of 0.00 +- 0.05. `sample` was taken at `values`.
std::vector<std::int32_t> OpenParameters(ModelResiduals& residuals, std::span<const double> values,
                                         const FitStatistics& statistics,
                                         const ResidualSample& sample);

/// Indices of varied parameters of which the points show but a limit, a step faster than they lie: there the derivative vanishes,
/// and the error is anything. Either it is more than half of the value, and one error up or down, with the others going along,
/// changes the curve by more than ten times what the derivatives promise, or leaves none. Or it is more than a tenth, and a
/// thousandth of the value gives the same curve within two deviations, and within half of what the derivatives promise for the
/// way there. `sample` was taken at `values`.
std::vector<std::int32_t> LimitParameters(ModelResiduals& residuals, std::span<const double> values,
                                          const FitStatistics& statistics,
                                          const ResidualSample& sample);

/// Those of HardlyDetermined whose errors alone would move the curve by more than a tenth of what it spreads over: not an offset
/// of 0.1 +- 0.2 under a peak of 50. `sample` was taken at `values`.
std::vector<std::int32_t> TradedParameters(const FitStatistics& statistics,
                                           std::span<const double> values,
                                           const ResidualSample& sample);

}  // namespace tarnwick
