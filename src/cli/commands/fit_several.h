// The fit command over several DataSets or several functions, and what it has in common with the plain one. Knows engine and
// options; what is told stands in fit_text.h.
#pragma once

#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "cli/options/fit_model.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "cli/output/output.h"

namespace tarnwick {
class EParserException;
}

namespace tarnwick::cli {

inline constexpr const char* kNamedAfterSource = "Residuals of DATASET";

struct FitOptions {
  InputArguments input;
  FitModelArguments model;
  SaveArguments save;
  std::vector<std::string> datasets;
  std::vector<std::string> shared;
  bool all_points = false;
  bool guess = false;
  bool finish = false;
  double level = 0.95;
  int bands = 0;
  std::string residuals;  // their name, or kNamedAfterSource
  bool band_curves = false;
  bool print = false;
  std::string size;
  std::string save_function;
};

/// Gives the DataSet the model that was named. Answers the names of a typed formula that --guess makes parameters.
std::vector<std::string> GiveModel(const FitOptions& options, TSeries& series, Output& output);
FitRunOptions RunOptionsOf(const FitOptions& options);
/// Throws Error with where in the model's expression the trouble is, and what may help.
[[noreturn]] void RefuseExpression(const EParserException& error, const FitSettings& model);

/// What the graph gets beside the fitted model.
void AddToGraph(const FitOptions& options, TSeries& series, TxyGraph& graph);

/// One fit over all of options.datasets.
void RunJoint(const FitOptions& options, const InputGraph& input, Output& output);

/// Each of options.model.functions over one DataSet, the best first.
void RunComparison(const FitOptions& options, const TSeries& series, Output& output);

}  // namespace tarnwick::cli
