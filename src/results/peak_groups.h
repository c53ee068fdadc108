// The fit of more peaks than one fit can vary: neighbours together, group after group, until none moves. Knows models and jobs; no
// graph.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/fit_job.h"
#include "base/progress.h"
#include "results/peak_model.h"

namespace tarnwick {

struct PeakGroupsFit {
  FitSettings model;              ///< with the values found
  std::vector<FittedPeak> peaks;  ///< errors with line and the other groups held
  std::string told;               ///< how they were fitted, sentences
};

/// `job` is that of a PeakModel, all its points. Each group is fitted over itself and the peaks beside it, which are held as the
/// others are; the line after each round over all points, by linear least squares. Rounds end where no value moves by more than a
/// tenth of its error. Throws Error where the model is no PeakModel, and what RunFit throws.
PeakGroupsFit FitPeakGroups(const FitJob& job, Progress& progress);

}  // namespace tarnwick
