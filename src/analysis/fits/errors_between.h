// The error that a measurement would have where there is none. Knows a fit's points; no model.
#pragma once

#include <span>
#include <vector>

#include "analysis/fits/fit_job.h"

namespace tarnwick {

/// At each X the errors of the points beside it, on the straight line between them; beyond the points that of the last one. Of
/// points at one X the mean of the squares counts. Empty for a job without errors.
std::vector<double> ErrorsBetween(const FitJob& job, std::span<const double> x);

}  // namespace tarnwick
