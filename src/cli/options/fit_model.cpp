#include "cli/options/fit_model.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "cli/options/command.h"
#include "cli/options/number_check.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick::cli {
namespace {

struct Method {
  const char* name;
  FitProcType type;
};

constexpr std::array kMethods{
    Method{"powell", FitProcType::cfp_Powell},
    Method{"simplex", FitProcType::cfp_Simplex},
    Method{"conjgrad", FitProcType::cfp_ConjGrad},
    Method{"newton", FitProcType::cfp_Newton},
    Method{"simplex-powell", FitProcType::cfp_SimplexPowell},
};

FitProcType MethodOf(const std::string& name) {
  const auto* const row = std::find_if(kMethods.begin(), kMethods.end(),
                                       [&](const Method& method) { return method.name == name; });
  if (row == kMethods.end()) throw UsageError("\"" + name + "\" is no method");
  return row->type;
}

struct Assignment {
  std::string name;
  double value = 0;
  std::optional<bool> vary;
};

Assignment ReadAssignment(const std::string& text) {
  Assignment assignment;
  const std::size_t equals = text.find('=');
  assignment.name = TrimBlanks(std::string_view(text).substr(0, equals));
  if (equals == std::string::npos || assignment.name.empty())
    throw UsageError("\"" + text + "\" is no parameter; --parameter takes NAME=VALUE[:fixed]");
  std::string_view number = std::string_view(text).substr(equals + 1);
  if (const std::size_t colon = number.find(':'); colon != std::string_view::npos) {
    const std::string_view how = TrimBlanks(number.substr(colon + 1));
    if (how != "fixed" && how != "varied")
      throw UsageError("\"" + text + "\": a parameter is fixed or varied");
    assignment.vary = how == "varied";
    number = number.substr(0, colon);
  }
  const std::optional<double> value = ParseNumber(number);
  if (!value) throw UsageError("\"" + text + "\" gives " + assignment.name + " no number");
  assignment.value = *value;
  return assignment;
}

ParameterSettings* FindParameter(FitSettings& settings, const std::string& name) {
  const auto row = std::find_if(settings.parameters.begin(), settings.parameters.end(),
                                [lower = LowerAscii(name)](const ParameterSettings& parameter) {
                                  return LowerAscii(parameter.Name) == lower;
                                });
  return row == settings.parameters.end() ? nullptr : &*row;
}

/// An expression's parameters are those that are assigned; a function has its own, which assignments change.
void SetParameters(const FitModelArguments& arguments, FitSettings& settings) {
  const bool new_ones = !arguments.expression.empty();
  for (const std::string& text : arguments.parameters) {
    const Assignment assignment = ReadAssignment(text);
    if (new_ones && LowerAscii(assignment.name) == LowerAscii(settings.XVarName))
      throw UsageError("\"" + assignment.name + "\" is the variable of the expression");
    ParameterSettings* parameter = FindParameter(settings, assignment.name);
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
    parameter->Value = assignment.value;
    if (assignment.vary) parameter->Vary = *assignment.vary;
  }
}

FitSettings BaseModel(const FitModelArguments& arguments, const FitSettings& own) {
  if (!arguments.function.empty()) return LoadFitFunction(arguments.function);
  if (!arguments.expression.empty()) {
    FitSettings settings;
    settings.Expression = arguments.expression;
    settings.ProcType = FitProcType::cfp_Newton;
    return settings;
  }
  if (own.Expression.empty())
    throw UsageError("the DataSet has no model: name one by --function or --expression");
  return own;
}

}  // namespace

void AddFitModel(Command& command, FitModelArguments& arguments) {
  const char* group = "The model";
  const Option function =
      command.Add("--function", arguments.function, "Fitting-function file (.tfn)").Group(group);
  command
      .Add("--expression", arguments.expression,
           "Expression in x and parameters; without either the DataSet's own model")
      .Group(group)
      .Excludes(function);
  command
      .Add("--parameter", arguments.parameters,
           "NAME=VALUE where it starts; repeat. VALUE:fixed is not varied")
      .Group(group)
      .Repeated()
      .OneValueEach()
      .ValueName("NAME=VALUE");
  std::vector<std::string> names;
  names.reserve(kMethods.size());
  for (const Method& method : kMethods) names.emplace_back(method.name);
  command.Add("--method", arguments.method, "How the sum of squares is minimised")
      .Group(group)
      .OneOf(names);
  command.Add("--left", arguments.left, "Smallest X that enters").Group(group);
  command.Add("--right", arguments.right, "X from which on points are left out").Group(group);
  command.Add("--points", arguments.points, "About how many points enter (the model's, or 150)")
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
}

FitSettings ChooseModel(const FitModelArguments& arguments, const FitSettings& own) {
  FitSettings settings = BaseModel(arguments, own);
  SetParameters(arguments, settings);
  if (!arguments.method.empty()) settings.ProcType = MethodOf(arguments.method);
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
  for (const Method& method : kMethods) {
    if (method.type == type) return method.name;
  }
  return "unknown";
}

}  // namespace tarnwick::cli
