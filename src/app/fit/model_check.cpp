#include "app/fit/model_check.h"

#include <algorithm>

#include "base/error.h"
#include "base/text_encoding.h"
#include "expr/expression_hints.h"
#include "expr/words/parser_exception.h"
#include "fit/model/curve_fit.h"
#include "fit/model/ties.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

std::string NameTrouble(const std::vector<ParameterSettings>& parameters) {
  std::vector<std::string> seen;
  for (const ParameterSettings& one : parameters) {
    const std::string lower = LowerAscii(one.Name);
    if (lower.empty()) return "A parameter has no name";
    if (std::find(seen.begin(), seen.end(), lower) != seen.end()) {
      return "Parameter \"" + one.Name + "\" Already Defined!";
    }
    seen.push_back(lower);
  }
  return {};
}

}  // namespace

ModelCheck CheckModel(const FitSettings& model) {
  ModelCheck check;
  check.error = NameTrouble(model.parameters);
  if (check.error.empty()) check.error = LimitTrouble(model.parameters);
  if (!check.error.empty() || model.Expression.empty()) return check;
  TCurFit compiled;
  compiled.SetSettings(model, false);
  try {
    compiled.Prepare();
  } catch (const EParserException& error) {
    check.error = error.what();
    // With templates the place is in a text that the user does not see.
    if (error.Place() && model.templates.empty()) {
      check.error += ", at character " + std::to_string(*error.Place() + 1);
    }
    if (!error.Hint().empty()) check.error += ": " + error.Hint();
    return check;
  } catch (const Error& error) {
    check.error = error.what();
    return check;
  }
  check.unknown_names = compiled.UnassignedNames();
  check.warning = SignWarning(model.Expression);
  return check;
}

ParameterSettings MadeParameter(const std::string& name) {
  ParameterSettings parameter;
  parameter.Name = name;
  parameter.Value = 1;
  parameter.Vary = true;
  parameter.Description = "Parameter " + name;
  return parameter;
}

FitSettings TypedModel(const std::string& formula, std::size_t points) {
  FitSettings model;
  model.Expression = formula;
  for (const std::string& name : CheckModel(model).unknown_names)
    model.parameters.push_back(MadeParameter(name));
  StartTypedModel(model, points);
  return model;
}

std::string FreeParameterName(const std::vector<ParameterSettings>& parameters) {
  const std::string prefix = ParameterSettings().Name;
  for (int number = 1;; ++number) {
    std::string name = prefix + std::to_string(number);
    const bool taken = std::any_of(
        parameters.begin(), parameters.end(),
        [&](const ParameterSettings& one) { return LowerAscii(one.Name) == LowerAscii(name); });
    if (!taken) return name;
  }
}

}  // namespace tarnwick
