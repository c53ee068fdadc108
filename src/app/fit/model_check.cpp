#include "app/fit/model_check.h"

#include <algorithm>

#include "base/error.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "expr/expression_hints.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"
#include "fit/model/curve_fit.h"
#include "fit/model/find_parameter.h"
#include "fit/model/ties.h"
#include "fit/model/typed_model.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

constexpr std::size_t kNamesTold = 5;

std::string NameTrouble(const FitSettings& model) {
  std::vector<std::string> seen;
  for (const ParameterSettings& one : model.parameters) {
    const std::string lower = LowerAscii(one.Name);
    if (lower.empty()) return "A parameter has no name";
    if (lower == LowerAscii(model.XVarName))
      return "\"" + one.Name +
             "\" is the variable and a parameter: delete the parameter, or give one another name.";
    if (std::find(seen.begin(), seen.end(), lower) != seen.end()) {
      return "Parameter \"" + one.Name + "\" Already Defined!";
    }
    seen.push_back(lower);
  }
  return {};
}

/// `expression` is what was compiled; the place is told where it is what the user sees.
std::string TroubleText(const EParserException& error, const std::string& expression,
                        std::optional<std::size_t> place) {
  std::string text = ShortMessage(error, expression);
  if (place) text += ", at character " + std::to_string(*place + 1);
  if (!error.Hint().empty()) text += ": " + error.Hint();
  return text;
}

}  // namespace

ModelCheck CheckModel(const FitSettings& model, std::span<const std::string> x_names) {
  ModelCheck check;
  check.error = NameTrouble(model);
  if (check.error.empty()) check.error = LimitTrouble(model.parameters);
  if (!check.error.empty() || model.Expression.empty()) return check;
  TCurFit compiled;
  compiled.SetSettings(model, MarkModified::No);
  try {
    compiled.Prepare();
  } catch (const EParserException& error) {
    // With templates and ties the place is in a text that the user does not see.
    if (compiled.CurrentText() == model.Expression) check.place = error.LikelyPlace();
    check.error = TroubleText(error, compiled.CurrentText(), check.place);
    check.in_expression = true;
    return check;
  } catch (const Error& error) {
    check.error = error.what();
    return check;
  }
  check.unknown_names = UnknownNames(compiled);
  check.warnings = ExpressionWarnings(model.Expression);
  check.missed_variable = MissedVariable(model, x_names);
  FitSettings made = model;
  for (const std::string& name : check.unknown_names)
    made.parameters.push_back(MadeParameter(name));
  const std::string lacks = "The formula has no " + model.XVarName;
  if (!check.missed_variable.empty()) {
    check.warnings.insert(check.warnings.begin(),
                          lacks + ". Is " + check.missed_variable + " the variable?");
  } else if (IgnoresX(made, compiled.CurrentText())) {
    check.warnings.insert(check.warnings.begin(), lacks + ": its curve is the same at every X.");
  }
  return check;
}

Calculation Calculate(FitSettings model, const std::string& text, double x) {
  if (!text.empty()) model.Expression = text;
  if (model.Expression.empty()) return {.error = "There is no expression yet."};
  TCurFit compiled;
  compiled.SetSettings(model, MarkModified::No);
  try {
    compiled.Prepare();
    const double value = compiled.Value(x);
    const std::vector<std::string> unknown = compiled.UnassignedNames();
    if (unknown.empty()) return {.value = value};
    return {.error = "No value is known of " + Listed(unknown, kNamesTold), .names_unknown = true};
  } catch (const EParserException& error) {
    return {.error = TroubleText(error, compiled.CurrentText(), {})};
  } catch (const Error& error) {
    return {.error = error.what()};
  }
}

FitSettings TypedModel(const std::string& formula, std::span<const std::string> variables,
                       std::size_t points) {
  FitSettings model;
  model.Expression = formula;
  model.XVarName = variables.front();
  ChooseVariable(model, variables);
  for (const std::string& name : CheckModel(model).unknown_names)
    model.parameters.push_back(MadeParameter(name));
  StartTypedModel(model, points);
  return model;
}

std::string FreeParameterName(const std::vector<ParameterSettings>& parameters) {
  const std::string prefix = ParameterSettings().Name;
  for (int number = 1;; ++number) {
    std::string name = prefix + std::to_string(number);
    if (FindParameter(parameters, name) == nullptr) return name;
  }
}

}  // namespace tarnwick
