// The model to fit as the command line names it: a function file, an expression with parameters, or the DataSet's own. Knows
// no points.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick::cli {

class Command;

struct FitModelArguments {
  std::vector<std::string> functions;
  std::string expression;
  std::vector<std::string>
      parameters;      // NAME=VALUE, with :fixed, :varied or bounds; NAME=EXPRESSION
  std::string method;  // empty: the function's own; Newton-type for an expression
  std::optional<double> left;
  std::optional<double> right;
  std::optional<int> points;
  std::optional<double> tolerance;
  std::optional<int> max_iterations;
  std::string weights;  // empty, as the next two: the function's own
  std::string errors;
  std::string loss;
  std::optional<double> loss_scale;
};

void AddFitModel(Command& command, FitModelArguments& arguments);

/// `own` is the model of the DataSet, which has so many points: a typed expression takes all of them. Of several functions the
/// first is taken. Throws UsageError when no model is named or a parameter means nothing, and what
/// LoadFitFunction throws.
FitSettings ChooseModel(const FitModelArguments& arguments, const FitSettings& own,
                        std::size_t points);

/// The name of a method on the command line.
std::string MethodName(FitProcType type);
/// The names of weights, errors and loss there.
const char* WeightsName(FitWeights weights);
const char* ErrorsName(FitErrors errors);
const char* LossName(FitLoss loss);

}  // namespace tarnwick::cli
