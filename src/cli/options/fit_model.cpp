#include "cli/options/fit_model.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "base/word_list.h"
#include "cli/options/command.h"
#include "cli/options/number_check.h"
#include "expr/expression_parts.h"
#include "fit/model/find_parameter.h"
#include "fit/model/fit_function_file.h"
#include "fit/model/ties.h"
#include "results/fitted_model.h"

namespace tarnwick::cli {
namespace {

template <class Value>
struct Named {
  const char* name;
  Value value;
};

constexpr Named<FitWeights> kWeights[] = {
    {"none", FitWeights::None},
    {"errors", FitWeights::Errors},
    {"counts", FitWeights::Counts},
    {"relative", FitWeights::Relative},
};
constexpr Named<FitErrors> kErrors[] = {{"absolute", FitErrors::Absolute},
                                        {"scaled", FitErrors::Scaled}};
constexpr Named<FitLoss> kLosses[] = {
    {"linear", FitLoss::Linear},
    {"soft-l1", FitLoss::SoftL1},
    {"huber", FitLoss::Huber},
    {"cauchy", FitLoss::Cauchy},
};
constexpr Named<FitProcType> kMethods[] = {
    {"powell", FitProcType::cfp_Powell},
    {"simplex", FitProcType::cfp_Simplex},
    {"conjgrad", FitProcType::cfp_ConjGrad},
    {"newton", FitProcType::cfp_Newton},
    {"simplex-powell", FitProcType::cfp_SimplexPowell},
};

template <class Rows>
std::vector<std::string> NamesOf(const Rows& rows) {
  std::vector<std::string> names;
  names.reserve(std::size(rows));
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

/// Leaves `value` as it is for an empty name; others are checked in parsing.
template <class Rows, class Value>
void Choose(const Rows& rows, const std::string& name, Value& value) {
  for (const auto& row : rows) {
    if (row.name == name) value = row.value;
  }
}

template <class Rows, class Value>
const char* NameOf(const Rows& rows, Value value) {
  for (const auto& row : rows) {
    if (row.value == value) return row.name;
  }
  return "unknown";
}

constexpr const char* kAssignmentForms =
    "--parameter takes NAME=VALUE, NAME=VALUE:LOW:HIGH, NAME=VALUE:fixed or NAME=EXPRESSION";

/// What stands behind the sign of an assignment: a number with how it is varied or its bounds, else a tie.
struct Assignment {
  std::string name;
  std::optional<double> value;
  std::optional<bool> vary;
  bool bounded = false;
  double low = ParameterSettings().Low;
  double high = ParameterSettings().High;
  std::string tie;
};

double ReadBound(const std::string& text, std::string_view bound, double none) {
  if (TrimBlanks(bound).empty()) return none;
  const std::optional<double> number = ParseNumber(bound);
  if (!number || IsUndefined(*number))
    throw UsageError("\"" + text + "\": \"" + std::string(bound) + "\" is no bound");
  return *number;
}

/// Reads what stands behind a value.
void ReadManner(const std::string& text, std::string_view manner, Assignment& assignment) {
  const std::string_view how = TrimBlanks(manner);
  if (how == "fixed" || how == "varied") {
    assignment.vary = how == "varied";
    return;
  }
  const std::size_t colon = manner.find(':');
  if (colon == std::string_view::npos)
    throw UsageError("\"" + text + "\": a parameter is fixed, varied or within LOW:HIGH");
  assignment.bounded = true;
  assignment.low = ReadBound(text, manner.substr(0, colon), assignment.low);
  assignment.high = ReadBound(text, manner.substr(colon + 1), assignment.high);
}

Assignment ReadAssignment(const std::string& text) {
  Assignment assignment;
  const std::size_t equals = text.find('=');
  assignment.name = TrimBlanks(std::string_view(text).substr(0, equals));
  if (equals == std::string::npos || assignment.name.empty())
    throw UsageError("\"" + text + "\" is no parameter; " + kAssignmentForms);
  const std::string_view right = TrimBlanks(std::string_view(text).substr(equals + 1));
  if (right.empty())
    throw UsageError("\"" + text + "\" gives \"" + assignment.name + "\" no value");
  const std::size_t colon = right.find(':');
  assignment.value = ParseNumber(right.substr(0, colon));
  if (!assignment.value) {
    assignment.tie = right;
  } else if (colon != std::string_view::npos) {
    ReadManner(text, right.substr(colon + 1), assignment);
  }
  return assignment;
}

void Assign(const Assignment& assignment, ParameterSettings& parameter) {
  if (!assignment.tie.empty()) {
    const ParameterSettings none;
    parameter.Tie = assignment.tie;
    parameter.Low = none.Low;
    parameter.High = none.High;
    parameter.Vary = false;
    return;
  }
  if (!parameter.Tie.empty()) parameter.Vary = true;
  parameter.Tie.clear();
  parameter.Value = *assignment.value;
  if (assignment.vary) parameter.Vary = *assignment.vary;
  if (!assignment.bounded) return;
  parameter.Low = assignment.low;
  parameter.High = assignment.high;
}

/// Names, and words that parameters may hide.
std::vector<std::string> NamesIn(const std::string& text) {
  std::vector<std::string> names;
  for (const ExpressionPart& part : PartsOf(text)) {
    if (part.kind != PartKind::Name && part.kind != PartKind::Function) continue;
    std::string name = text.substr(part.place, part.length);
    if (std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
  }
  return names;
}

/// A slip in the name of a parameter would vary one that nothing depends on. Ties may hold names that the expression lacks.
void RequireUse(const FitSettings& settings) {
  std::string texts = settings.Expression;
  for (const ParameterSettings& one : settings.parameters) {
    if (!one.Tie.empty()) texts += "+(" + one.Tie + ')';
  }
  const std::vector<std::string> names = NamesIn(texts);
  for (const ParameterSettings& parameter : settings.parameters) {
    const auto is_it = [lower = LowerAscii(parameter.Name)](const std::string& one) {
      return LowerAscii(one) == lower;
    };
    if (!parameter.Vary || std::ranges::any_of(names, is_it)) continue;
    throw UsageError("the expression holds no \"" + parameter.Name + "\"; its names are " +
                     Listed(names));
  }
}

/// An expression's parameters are those that are assigned; a function has its own, which assignments change.
void SetParameters(const FitModelArguments& arguments, FitSettings& settings) {
  const bool new_ones = !arguments.expression.empty();
  for (const std::string& text : arguments.parameters) {
    const Assignment assignment = ReadAssignment(text);
    if (new_ones && LowerAscii(assignment.name) == LowerAscii(settings.XVarName))
      throw UsageError("\"" + assignment.name + "\" is the variable of the expression");
    ParameterSettings* parameter = FindParameter(settings.parameters, assignment.name);
    if (parameter == nullptr) {
      if (!new_ones) throw UsageError("the model has no parameter \"" + assignment.name + "\"");
      ParameterSettings added;
      added.Name = assignment.name;
      added.Description = "Parameter " + assignment.name;
      added.Vary = true;
      parameter = &settings.parameters.emplace_back(added);
    } else if (new_ones) {
      throw UsageError("Parameter \"" + assignment.name + "\" Already Defined!");
    }
    Assign(assignment, *parameter);
  }
  if (const std::string trouble = LimitTrouble(settings.parameters); !trouble.empty())
    throw UsageError(trouble.substr(0, trouble.size() - 1));
  FollowTies(settings.parameters);
  if (new_ones) RequireUse(settings);
}

FitSettings BaseModel(const FitModelArguments& arguments, const FitSettings& own,
                      std::size_t points) {
  if (!arguments.functions.empty()) return LoadFitFunction(arguments.functions.front());
  if (!arguments.expression.empty()) {
    FitSettings settings;
    settings.Expression = arguments.expression;
    StartTypedModel(settings, points);
    return settings;
  }
  if (own.Expression.empty())
    throw UsageError("the DataSet has no model: name one by --function or --expression");
  return own;
}

void AddFitWeighting(Command& command, FitModelArguments& arguments) {
  const char* group = "Weights and errors";
  command
      .Add("--weights", arguments.weights,
           "What the points weigh by: their errors of Y, counts or relative by the model's own "
           "value (errors where the DataSet has some, else none)")
      .Group(group)
      .OneOf(NamesOf(kWeights));
  command
      .Add("--errors", arguments.errors,
           "Take the points' errors at their word, or scale them by the residuals (absolute with "
           "weights by errors and counts, else scaled)")
      .Group(group)
      .OneOf(NamesOf(kErrors));
  command.Add("--loss", arguments.loss, "How much points far off count (linear: by their square)")
      .Group(group)
      .OneOf(NamesOf(kLosses));
  command
      .Add(
          "--loss-scale", arguments.loss_scale,
          "Residual, in units of the point's error, from which on the loss holds it for less (told "
          "by the residuals' median)")
      .Group(group)
      .Check(kPositiveNumber);
}

}  // namespace

void AddFitModel(Command& command, FitModelArguments& arguments) {
  const char* group = "The model";
  const Option function = command
                              .Add("--function", arguments.functions,
                                   "Fitting-function file (.tfn); repeat to compare functions")
                              .Group(group)
                              .Repeated()
                              .OneValueEach()
                              .ValueName("FILE");
  command
      .Add("--expression", arguments.expression,
           "Expression in x and parameters; without either the DataSet's own model")
      .Group(group)
      .Excludes(function);
  command
      .Add("--parameter", arguments.parameters,
           "NAME=VALUE where it starts; repeat. VALUE:fixed is not varied, VALUE:LOW:HIGH keeps "
           "within bounds (either may be empty), an expression of other parameters ties it to them")
      .Group(group)
      .Repeated()
      .OneValueEach()
      .ValueName("NAME=VALUE");
  command.Add("--method", arguments.method, "How the sum of squares is minimised")
      .Group(group)
      .OneOf(NamesOf(kMethods));
  command.Add("--left", arguments.left, "Smallest X that enters").Group(group);
  command.Add("--right", arguments.right, "X from which on points are left out").Group(group);
  command
      .Add("--points", arguments.points,
           "About how many points enter (the model's; all for an expression)")
      .Group(group)
      .Check(kPositiveNumber);
  command.Add("--tolerance", arguments.tolerance, "Convergence tolerance (the model's, or 3E-8)")
      .Group(group)
      .Check(kPositiveNumber);
  command
      .Add("--max-iterations", arguments.max_iterations,
           "Limit of iterations (the model's, or 200)")
      .Group(group)
      .Check(kPositiveNumber);
  AddFitWeighting(command, arguments);
}

FitSettings ChooseModel(const FitModelArguments& arguments, const FitSettings& own,
                        std::size_t points) {
  FitSettings settings = BaseModel(arguments, own, points);
  SetParameters(arguments, settings);
  Choose(kMethods, arguments.method, settings.ProcType);
  Choose(kWeights, arguments.weights, settings.weighting.weights);
  Choose(kErrors, arguments.errors, settings.weighting.errors);
  Choose(kLosses, arguments.loss, settings.weighting.loss);
  if (arguments.loss_scale && settings.weighting.loss == FitLoss::Linear)
    throw UsageError("--loss-scale needs --loss soft-l1, huber or cauchy");
  settings.weighting.loss_scale = arguments.loss_scale.value_or(settings.weighting.loss_scale);
  if (arguments.left) settings.LeftMargin = *arguments.left;
  if (arguments.right) settings.RightMargin = *arguments.right;
  settings.LeftMarginUsed = settings.LeftMarginUsed || arguments.left.has_value();
  settings.RightMarginUsed = settings.RightMarginUsed || arguments.right.has_value();
  settings.NPoints = arguments.points.value_or(settings.NPoints);
  settings.Tolerance = arguments.tolerance.value_or(settings.Tolerance);
  settings.IterMax = arguments.max_iterations.value_or(settings.IterMax);
  return settings;
}

std::string MethodName(FitProcType type) {
  return NameOf(kMethods, type);
}

const char* WeightsName(FitWeights weights) {
  return NameOf(kWeights, weights);
}

const char* ErrorsName(FitErrors errors) {
  return NameOf(kErrors, errors);
}

const char* LossName(FitLoss loss) {
  return NameOf(kLosses, loss);
}

}  // namespace tarnwick::cli
