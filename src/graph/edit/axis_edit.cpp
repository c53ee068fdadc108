#include "graph/edit/axis_edit.h"

#include "base/number_text.h"
#include "graph/axes/axis.h"
#include "graph/axes/calendar_scale.h"

namespace tarnwick {
namespace {

/// What the axis gives itself gives way to what is wanted.
AxisLook ByHand(const AxisState& wanted, const AxisState& was) {
  AxisLook look = wanted;
  if (wanted.Title != was.Title) look.EnableAutoTitle = false;
  return look;
}

void ChangeScale(TAxis& axis, const AxisState& wanted, const AxisState& was) {
  if (wanted.LogScale != was.LogScale) axis.SetLogScale(wanted.LogScale);
  if (wanted.ShowAsTime != was.ShowAsTime) axis.SetShowAsTime(wanted.ShowAsTime);
  if (wanted.TickType != was.TickType) axis.SetDateTickType(wanted.TickType);
  if (wanted.LogCycleDivisions != was.LogCycleDivisions) {
    axis.SetAutoStepping(false);
    axis.SetLogCycleDivisions(wanted.LogCycleDivisions);
  }
}

/// What goes off does so before values are set, what goes on after.
void ChangeRange(TAxis& axis, const AxisState& wanted, const AxisState& was) {
  if (was.AutoSizing && !wanted.AutoSizing) axis.SetAutoSizing(false);
  if (was.AutoStepping && !wanted.AutoStepping) axis.SetAutoStepping(false);
  if (wanted.Min != was.Min) axis.SetMin(wanted.Min);
  if (wanted.Max != was.Max) axis.SetMax(wanted.Max);
  if (wanted.StepSize != was.StepSize) axis.SetStepSize(wanted.StepSize);
  if (wanted.MinScaleLength != was.MinScaleLength) axis.SetMinScaleLength(wanted.MinScaleLength);
  if (wanted.AutoStepping && !was.AutoStepping) axis.SetAutoStepping(true);
  if (wanted.AutoSizing && !was.AutoSizing) axis.SetAutoSizing(true);
}

}  // namespace

void ChangeAxis(TAxis& axis, const AxisState& wanted) {
  const AxisState was = axis.State();
  const AxisLook look = ByHand(wanted, was);
  if (wanted.LabelDecimals != was.LabelDecimals) axis.SetAdjustDecPlaces(false);
  if (look != was) axis.SetLook(look);
  if (wanted.AdjustDecPlaces != was.AdjustDecPlaces) {
    axis.SetAdjustDecPlaces(wanted.AdjustDecPlaces);
  }
  ChangeScale(axis, wanted, was);
  ChangeRange(axis, wanted, was);
}

std::string AxisObjection(const AxisState& wanted, const StepLimits& limits) {
  if (!(wanted.Min < wanted.Max)) return "The minimum must lie below the maximum.";
  if (wanted.LogScale) {
    return wanted.Min > 0 ? "" : "A logarithmic axis begins above zero.";
  }
  if (!(wanted.StepSize > 0)) return "A step is greater than zero.";
  const bool by_calendar = wanted.ShowAsTime && StepDays(wanted.TickType) > 0;
  if (wanted.AutoStepping || by_calendar) return "";
  if ((wanted.Max - wanted.Min) / wanted.StepSize > limits.max_steps) {
    return "That would be more than " + Counted(limits.max_steps, "step") +
           ", the most that all axes may have.";
  }
  return "";
}

}  // namespace tarnwick
