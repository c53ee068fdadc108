#include "app/display/displayed_parameters.h"

#include "base/error.h"
#include "base/undefined.h"
#include "fit/model/curve_fit.h"
#include "results/fit_texts.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

TCurFit* ModelOf(const DisplayedParameter& parameter) {
  if (!parameter.document) return nullptr;
  TxyGraph& graph = parameter.document->WholeGraph();
  if (parameter.series >= graph.SeriesCount()) return nullptr;
  TCurFit& model = graph.Series(parameter.series).Fit();
  return parameter.number <= model.NParams() ? &model : nullptr;
}

double ErrorOf(const DisplayedParameter& parameter, const TCurFit& model) {
  const TxyGraph& graph = parameter.document->WholeGraph();
  if (!model.Result() || !FitChangedText(graph, graph.Series(parameter.series)).empty())
    return kUndefined;
  const auto fitted = FittedParameters(model.Settings(), *model.Result());
  return fitted.at(static_cast<std::size_t>(parameter.number - 1)).error;
}

}  // namespace

std::vector<DisplayedParameter> DisplayedParametersOf(const std::vector<Document*>& documents) {
  std::vector<DisplayedParameter> shown;
  for (Document* const document : documents) {
    const TxyGraph& graph = document->WholeGraph();
    for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
      const TSeries& series = graph.Series(i);
      if (series.Fit().Status() == FitStatus::cf_None) continue;
      for (std::int32_t number = 1; number <= series.Fit().NParams(); ++number) {
        const TDBLParameter& parameter = series.Fit().Param(number);
        if (!parameter.Printed()) continue;
        shown.push_back({.document = document,
                         .series = i,
                         .number = number,
                         .name = parameter.Name(),
                         .units = parameter.Settings().Units,
                         .data_set = document->Name() + "." + series.SeriesName()});
      }
    }
  }
  return shown;
}

std::vector<DisplayedValue> ValuesOf(const std::vector<DisplayedParameter>& parameters) {
  std::vector<DisplayedValue> values;
  values.reserve(parameters.size());
  for (const DisplayedParameter& one : parameters) {
    const TCurFit& model = *ModelOf(one);
    values.push_back({model.Param(one.number).Value(), ErrorOf(one, model)});
  }
  return values;
}

std::optional<ParameterSettings> SettingsOf(const DisplayedParameter& parameter) {
  const TCurFit* const model = ModelOf(parameter);
  if (!model) return std::nullopt;
  return model->Param(parameter.number).Settings();
}

void ChangeValue(const DisplayedParameter& parameter, double value) {
  TCurFit* const model = ModelOf(parameter);
  if (!model) return;
  const ParameterSettings settings = model->Param(parameter.number).Settings();
  if (!settings.Tie.empty()) {
    throw Error("Parameter \"" + settings.Name + "\" is tied to " + settings.Tie +
                ": change what it is tied to, or take the tie away under Curve Fitting, Edit.");
  }
  parameter.document->Edit("Change Parameter " + settings.Name, [&](TxyGraph&) {
    model->Param(parameter.number).SetValue(value);
    model->UpdateTies();
  });
}

}  // namespace tarnwick
