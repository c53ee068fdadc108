#include "fit/model/typed_model.h"

#include <algorithm>
#include <string_view>

#include "base/text_encoding.h"
#include "expr/expression_parts.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

std::vector<std::string> UnknownNames(TCurFit& compiled) {
  std::vector<std::string> names = compiled.UnassignedNames();
  const std::string expression = compiled.Expression();
  const std::vector<ExpressionPart> parts = PartsOf(expression);
  for (std::string& name : names) {
    const auto typed = std::ranges::find_if(parts, [&](const ExpressionPart& part) {
      return LowerAscii(std::string_view(expression).substr(part.place, part.length)) == name;
    });
    if (typed != parts.end()) name = expression.substr(typed->place, typed->length);
  }
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

}  // namespace tarnwick
