// Values and errors of parameters that expressions of others give. Knows a model's settings and the fit's statistics.
#pragma once

#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

/// `values` are those of the varied parameters. The error is sqrt(g'Cg), g the derivatives of the tie by them. Throws as
/// TCurFit::Prepare.
std::vector<TiedParameter> TiedParameters(const FitSettings& model, std::span<const double> values,
                                          const FitStatistics& statistics);

}  // namespace tarnwick
