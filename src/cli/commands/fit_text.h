// What a fit answers, as text for people and as a document. Knows results; runs nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/output/json.h"
#include "cli/output/output.h"
#include "fit/fit_result.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/fit_settings.h"
#include "results/model_comparison.h"

namespace tarnwick {
class TSeries;
class TxyGraph;
}  // namespace tarnwick

namespace tarnwick::cli {

/// A finished fit and what was asked for beside it.
struct FitAnswer {
  FitSettings model;  ///< with the values found
  FitResult result;
  double level = 0.95;         ///< of intervals and bands
  std::vector<double> band_x;  ///< where bands are wanted; may be empty
  FitBands bands;              ///< at those X
};

void PrintFit(const FitAnswer& answer, Output& output);

/// The last fit of the graph's DataSet as PrintFit has it, with what changed since. There is one, or a damaged one.
Json LastFitJson(const TxyGraph& graph, const TSeries& series);

/// One fit over several DataSets.
struct JointAnswer {
  struct Part {
    std::string data_set;
    FitAnswer fit;
  };
  FitResult whole;
  std::vector<std::string> shared;
  std::vector<Part> parts;
};

void PrintJointFit(const JointAnswer& answer, Output& output);

void PrintComparison(const ModelComparison& compared, Output& output);

/// What a function's file is called.
std::string FunctionName(const std::string& file);

}  // namespace tarnwick::cli
