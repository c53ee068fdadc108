#include "fit/model/typed_model.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/text_encoding.h"
#include "base/word_list.h"
#include "expr/expression_parts.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

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
  compiled.SetSettings(model, false);
  compiled.Prepare();
  std::vector<std::string> names = UnknownNames(compiled);
  for (const std::string& name : names) model.parameters.push_back(MadeParameter(name));
  return names;
}

std::string TakenAsParameters(const std::vector<std::string>& names) {
  return "Taken as parameters: " + Listed(names) + ".";
}

}  // namespace tarnwick
