// Starting values for a fit, looked for in the points. Knows jobs and models; no minimiser and no DataSet.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"

namespace tarnwick {

/// The job's parameters with values near which the least sum of squares probably lies: of every formula the parameters that it is
/// linear in are solved for, the others tried over places, widths and rates that the points allow, within their bounds. With
/// them the model has a value at every point. Always the same for the same points. Nothing where no parameter varies or the
/// expression cannot be evaluated by blocks. Throws EParserException and Error (TCurFit::Prepare), EIntegerDivision, and Error
/// that says why there are no points, or at which of them the model has no value where no values were found without such.
std::optional<std::vector<ParameterSettings>> GuessStart(const FitJob& job);

/// Gives each job of one fit over several DataSets its own GuessStart, and the parameters of these names the mean of what the
/// jobs tell. Throws as GuessStart, and Error where one job tells nothing, both with the job's DataSet.
void GuessJointStart(std::span<FitJob> jobs, std::span<const std::string> shared);

}  // namespace tarnwick
