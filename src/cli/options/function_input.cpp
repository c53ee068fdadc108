#include "cli/options/function_input.h"

#include <cmath>

#include "graph/files/file_kinds.h"

namespace tarnwick::cli {
namespace {

/// Bounds and tie only where there are some, as in files.
Json ParameterJson(const ParameterSettings& parameter) {
  Json json = {{"Name", parameter.Name},
               {"Value", JsonNumber(parameter.Value)},
               {"StartDev", JsonNumber(parameter.StartDev)},
               {"FinalDev", JsonNumber(parameter.FinalDev)},
               {"Vary", parameter.Vary},
               {"Printed", parameter.Printed},
               {"Description", parameter.Description},
               {"Units", parameter.Units}};
  if (std::isfinite(parameter.Low)) json["Low"] = JsonNumber(parameter.Low);
  if (std::isfinite(parameter.High)) json["High"] = JsonNumber(parameter.High);
  if (!parameter.Tie.empty()) json["Tie"] = parameter.Tie;
  return json;
}

Json TemplateJson(const TemplateSettings& one) {
  return {{"Name", one.Name}, {"Text", one.Text}, {"Description", one.Description}};
}

}  // namespace

bool IsFitFunctionFile(const std::string& file) {
  return KindToRead(file).holds == FileHolds::FitFunction;
}

Json FitJson(const FitSettings& fit) {
  Json parameters = Json::Array();
  for (const ParameterSettings& one : fit.parameters) parameters.Append(ParameterJson(one));
  Json templates = Json::Array();
  for (const TemplateSettings& one : fit.templates) templates.Append(TemplateJson(one));
  Json json = {{"Status", static_cast<int>(fit.Status)},
               {"XVarName", fit.XVarName},
               {"Expression", fit.Expression},
               {"NPoints", fit.NPoints},
               {"CurveShown", fit.CurveShown},
               {"CurveColor", fit.CurveColor.value},
               {"CurveStyle", fit.CurveStyle},
               {"CurveWidth", fit.CurveWidth},
               {"NParams", fit.parameters.size()},
               {"Params", std::move(parameters)},
               {"Tolerance", JsonNumber(fit.Tolerance)},
               {"LeftMarginUsed", fit.LeftMarginUsed},
               {"RightMarginUsed", fit.RightMarginUsed},
               {"LeftMargin", JsonNumber(fit.LeftMargin)},
               {"RightMargin", JsonNumber(fit.RightMargin)},
               {"IterMax", fit.IterMax},
               {"ProcType", static_cast<int>(fit.ProcType)},
               {"NTemplates", fit.templates.size()},
               {"Templates", std::move(templates)}};
  const FitWeighting& weighting = fit.weighting;
  if (weighting.weights != FitWeights::Automatic)
    json["FitWeights"] = static_cast<int>(weighting.weights);
  if (weighting.errors != FitErrors::Automatic)
    json["FitErrors"] = static_cast<int>(weighting.errors);
  if (weighting.loss != FitLoss::Linear) json["FitLoss"] = static_cast<int>(weighting.loss);
  if (weighting.loss_scale > 0) json["FitLossScale"] = JsonNumber(weighting.loss_scale);
  return json;
}

}  // namespace tarnwick::cli
