// Several models fitted to one DataSet, and what is told of it: as rows and sentences for window, clipboard and batch program
// alike. Knows DataSets and fits; changes neither graph nor DataSet.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/fits/fit_comparison.h"
#include "analysis/fits/fit_job.h"
#include "base/progress.h"
#include "data/series/data_series.h"
#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

/// Where the fit of a model that is compared begins.
enum class ModelStart { AsGiven, Guessed };

struct NamedModel {
  std::string name;
  FitSettings settings;
  ModelStart start = ModelStart::AsGiven;
};

struct ModelComparison {
  std::vector<NamedModel> models;  ///< in the order given, with the values found
  std::vector<FitResult> results;  ///< of each
  FitComparison comparison;
};

/// Fits each of the models to the points of a DataSet with that state, from values that the points suggest where it is to be
/// guessed; where they suggest none it begins as given, which a note of its verdict says. Nothing when the user ends it. Throws
/// as RunFit and CompareFits.
std::optional<ModelComparison> CompareModels(const DataState& data, std::vector<NamedModel> models,
                                             const FitRunOptions& options, Progress& progress);

/// A heading, then a row for each model, the best first.
std::vector<std::vector<std::string>> ComparisonRows(const ModelComparison& compared);
/// How to read the rows, the F tests, and what is to be said of the fits.
std::vector<std::string> ComparisonRemarks(const ModelComparison& compared);
/// Both for a spreadsheet: columns kept apart by tabs.
std::string ComparisonAsTable(const ModelComparison& compared);

}  // namespace tarnwick
