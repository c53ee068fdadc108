// A fit of a DataSet's model to its points, from picking the points to the verdict. Knows DataSets and minimisers; asks
// nothing and draws nothing.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/progress.h"
#include "data/data_series.h"
#include "fit/fit_result.h"
#include "fit/fit_settings.h"

namespace tarnwick {

/// Which of the points between the margins enter: thinned by NPoints, or every one.
enum class FitPointChoice { Thinned, All };
/// Whether a method other than the Newton-type one is followed by it.
enum class FinishingStep { No, Yes };

struct FitRunOptions {
  FitPointChoice points = FitPointChoice::Thinned;
  FinishingStep finish = FinishingStep::No;
  int threads = 0;  ///< 0 = as many as help; the result does not depend on it
};

/// A fit as plain values, taken from a DataSet: runs on any thread.
struct FitJob {
  FitSettings settings;
  std::vector<double> x;  ///< points that enter
  std::vector<double> y;  ///< with the base line taken off
  std::int64_t points_in_range = 0;
  FitRunOptions options;
};

/// Picks the points by the model's margins: LeftMargin <= x < RightMargin, then one of (count / NPoints) + 1.
FitJob PrepareFit(const TDataSeries& series, const FitRunOptions& options = {});

/// Runs the job's method. `every_step` gets the varied parameters at the top of each iteration, on the calling thread. Throws
/// EParserException when the expression cannot be compiled. A run that fails answers why in the outcome, with the start values.
FitResult RunFit(const FitJob& job, Progress& progress,
                 const std::function<void(std::span<const double>)>& every_step = {});

/// Puts values and result into the DataSet's model (its values stay when the run failed) and tells with Modified false.
void ApplyFit(TDataSeries& series, const FitResult& result);

}  // namespace tarnwick
