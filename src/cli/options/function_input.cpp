#include "cli/options/function_input.h"

#include "graph/files/file_kinds.h"

namespace tarnwick::cli {
namespace {

Json ParameterJson(const ParameterSettings& parameter) {
  return {{"Name", parameter.Name},
          {"Value", JsonNumber(parameter.Value)},
          {"StartDev", JsonNumber(parameter.StartDev)},
          {"FinalDev", JsonNumber(parameter.FinalDev)},
          {"Vary", parameter.Vary},
          {"Printed", parameter.Printed},
          {"Description", parameter.Description},
          {"Units", parameter.Units},
          {"Low", JsonNumber(parameter.Low)},
          {"High", JsonNumber(parameter.High)},
          {"Tie", parameter.Tie}};
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
  return {{"Status", static_cast<int>(fit.Status)},
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
          {"Weights", static_cast<int>(fit.weighting.weights)},
          {"Errors", static_cast<int>(fit.weighting.errors)},
          {"Loss", static_cast<int>(fit.weighting.loss)},
          {"LossScale", JsonNumber(fit.weighting.loss_scale)},
          {"NTemplates", fit.templates.size()},
          {"Templates", std::move(templates)}};
}

}  // namespace tarnwick::cli
