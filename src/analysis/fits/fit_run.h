// A fit of a DataSet's model to its points, from picking the points to the verdict. Knows DataSets and minimisers; asks
// nothing and draws nothing.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "base/progress.h"
#include "data/series/data_series.h"
#include "fit/fit_result.h"

namespace tarnwick {

/// Runs the job's method. `every_step` gets the varied parameters at the top of each iteration, on the calling thread. Throws
/// EParserException when the expression cannot be compiled. A run that fails answers why in the outcome, with the start values.
FitResult RunFit(const FitJob& job, Progress& progress,
                 const std::function<void(std::span<const double>)>& every_step = {});

/// What a fit tells that ended as `ended` says at the values that the job has: statistics and verdict. However many parameters
/// are varied; not for weights that follow the curve. Throws EParserException and EIntegerDivision.
FitResult JudgeValues(const FitJob& job, MinimiseOutcome ended, Progress& progress);

/// A fit of several DataSets at once, each with its own model, some parameters with one value in all.
struct JointFit {
  FitResult whole;  ///< own parameters are named with their DataSet
  /// In the order of the jobs: values, errors, sum of squares and R² of each; other figures are those of the whole.
  std::vector<FitResult> parts;
};

/// Gets the varied parameters of each job, in order.
using EveryJointStep = std::function<void(std::span<const std::vector<double>>)>;

/// Settings of the run, weights among them, are those of the first job. Shared parameters start where the first has them.
/// `every_step` is called as that of RunFit. Throws as RunFit, and Error where a parameter to share is missing, tied or held
/// fixed in some job.
JointFit RunJointFit(std::span<const FitJob> jobs, std::span<const std::string> shared,
                     Progress& progress, const EveryJointStep& every_step = {});

/// Puts values and result into the DataSet's model (its values stay when the run failed) and tells with Modified false.
void ApplyFit(TDataSeries& series, const FitResult& result);

}  // namespace tarnwick
