#include "fit/model/typed_model.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/text_encoding.h"
#include "base/word_list.h"
#include "expr/expression_parts.h"
#include "fit/model/curve_fit.h"
#include "fit/model/find_parameter.h"

namespace tarnwick {
namespace {

/// Capitals are not told apart.
bool Holds(const std::string& expression, const std::string& name) {
  return std::ranges::any_of(PartsOf(expression), [&](const ExpressionPart& part) {
    return part.kind == PartKind::Name &&
           LowerAscii(std::string_view(expression).substr(part.place, part.length)) ==
               LowerAscii(name);
  });
}

}  // namespace

std::vector<std::string> UnknownNames(TCurFit& compiled) {
  struct Typed {
    std::size_t place;
    std::string name;
  };
  std::vector<Typed> found;
  const std::string expression = compiled.Expression();
  const std::vector<ExpressionPart> parts = PartsOf(expression);
  for (const std::string& name : compiled.UnassignedNames()) {
    const auto typed = std::ranges::find_if(parts, [&](const ExpressionPart& part) {
      return LowerAscii(std::string_view(expression).substr(part.place, part.length)) == name;
    });
    if (typed == parts.end()) {
      found.push_back({expression.size(), name});  // of a template
    } else {
      found.push_back({typed->place, expression.substr(typed->place, typed->length)});
    }
  }
  std::ranges::stable_sort(found, {}, &Typed::place);  // compiling meets them otherwise
  std::vector<std::string> names;
  names.reserve(found.size());
  for (Typed& one : found) names.push_back(std::move(one.name));
  return names;
}

ParameterSettings MadeParameter(const std::string& name) {
  ParameterSettings parameter;
  parameter.Name = name;
  parameter.Value = 1;
  parameter.Vary = true;
  parameter.Description = "Parameter " + name;
  return parameter;
}

std::vector<std::string> MakeParameters(FitSettings& model) {
  TCurFit compiled;
  compiled.SetSettings(model, MarkModified::No);
  compiled.Prepare();
  std::vector<std::string> names = UnknownNames(compiled);
  for (const std::string& name : names) model.parameters.push_back(MadeParameter(name));
  return names;
}

std::string WordOf(const std::string& caption) {
  const std::vector<ExpressionPart> parts = PartsOf(caption);
  const bool begins =
      !parts.empty() && parts.front().place == 0 &&
      (parts.front().kind == PartKind::Name || parts.front().kind == PartKind::Function);
  return begins ? caption.substr(0, parts.front().length) : std::string();
}

std::string MissedVariable(const FitSettings& model, std::span<const std::string> names) {
  // A template may hold what its name does not show.
  if (!model.templates.empty() || Holds(model.Expression, model.XVarName)) return {};
  const auto meant = std::ranges::find_if(names, [&](const std::string& name) {
    return !name.empty() && Holds(model.Expression, name);
  });
  return meant == names.end() ? std::string() : *meant;
}

bool ChooseVariable(FitSettings& model, std::span<const std::string> names) {
  const std::string meant = MissedVariable(model, names);
  if (meant.empty() || FindParameter(model.parameters, meant) != nullptr) return false;
  model.XVarName = meant;
  return true;
}

std::string TakenAsVariable(const std::string& name) {
  return name + " is taken for the variable, as X is named.";
}

bool IgnoresX(const FitSettings& model, const std::string& text) {
  return std::ranges::count(model.parameters, true, &ParameterSettings::Vary) > 1 &&
         !Holds(text, model.XVarName);
}

std::string TakenAsParameters(const std::vector<std::string>& names) {
  return "Taken as parameters: " + Listed(names) + ".";
}

}  // namespace tarnwick
