#include "results/fitted_model.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "graph/series.h"

namespace tarnwick {

void TakeFitFunction(TSeries& series, const FitSettings& function) {
  TCurFit& model = series.Fit();
  model.SetSettings(function, MarkModified::Yes);
  // A curve thinner than the line it describes is lost on it.
  model.SetCurveWidth(std::max(function.CurveWidth, series.Style().line_width));
  model.SetStatus(FitStatus::cf_Function);
}

void StartTypedModel(FitSettings& model, std::size_t points) {
  const FitSettings empty;
  if (model.ProcType == empty.ProcType) model.ProcType = FitProcType::cfp_Newton;
  // Of n points (n + 1) / NPoints are passed over after each that is used.
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
  if (model.NPoints == empty.NPoints && points >= static_cast<std::size_t>(empty.NPoints) - 1)
    model.NPoints = static_cast<std::int32_t>(std::min(points + 2, kMost));
}

void TakeFitSettings(TSeries& series, const FitSettings& settings) {
  TCurFit& model = series.Fit();
  const FitSettings present = model.Settings();
  if (settings == present) return;
  // The same in all that a fit depends on?
  FitSettings same = settings;
  same.Status = present.Status;
  same.CurveShown = present.CurveShown;
  same.CurveColor = present.CurveColor;
  same.CurveStyle = present.CurveStyle;
  same.CurveWidth = present.CurveWidth;
  const std::size_t count = std::min(same.parameters.size(), present.parameters.size());
  for (std::size_t i = 0; i < count; ++i) {
    same.parameters[i].Printed = present.parameters[i].Printed;
    same.parameters[i].Description = present.parameters[i].Description;
    same.parameters[i].Units = present.parameters[i].Units;
  }
  const LastFit last = model.Last();
  const bool modified = model.Modified();
  const bool look_only = same == present;
  model.SetSettings(settings, look_only && !modified ? MarkModified::No : MarkModified::Yes);
  if (!look_only) return;
  if (last.Holds()) {
    model.SetResult(last.record->result);
  } else {
    model.SetLast(last);
  }
}

}  // namespace tarnwick
