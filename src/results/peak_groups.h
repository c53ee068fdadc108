// The fit of more peaks than one fit can vary: neighbours together, group after group, until none moves. Knows models and jobs;
// no graph.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "base/progress.h"
#include "results/peak_model.h"

namespace tarnwick {

struct PeakGroupsFit {
  FitSettings model;  ///< with the values found
  std::vector<FittedPeak> peaks;
  FitVerdict verdict;  ///< on the whole
  std::string told;    ///< how they were fitted, sentences
};

/// `job` is that of a PeakModel, all its points. Each group is fitted over itself and the peaks beside it, less all peaks of
/// other groups as they are then, on a line of its own; the model's line is in the end that of all points, by linear least
/// squares. Rounds end where no value moves by more than a tenth of its error. Throws Error where the model is no PeakModel,
/// where weights follow the curve, and where a group cannot be fitted.
PeakGroupsFit FitPeakGroups(const FitJob& job, Progress& progress);

}  // namespace tarnwick
