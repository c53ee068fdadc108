#include "graph/axes/axis_state.h"

namespace tarnwick {

AxisState DefaultAxisState(AxisId id) {
  AxisState state;
  state.Title = id == AxisId::X ? "X axis" : id == AxisId::Y ? "Y axis" : "Y2 axis";
  if (id != AxisId::Y2) return state;
  state.AdjustDecPlaces = false;
  state.ShowAxis = false;
  state.Reversed = true;
  state.Offset_type = OffsetType::OtherMax;
  state.Gridlines = false;
  state.EnableAutoTitle = false;
  state.AutoSizing = false;
  state.AutoStepping = false;
  return state;
}

void TakeScale(AxisState& target, const AxisState& from) {
  target.Min = from.Min;
  target.Max = from.Max;
  target.StepSize = from.StepSize;
  target.AutoSizing = from.AutoSizing;
  target.AutoStepping = from.AutoStepping;
  target.NarrowLogRange = from.NarrowLogRange;
  target.DivisionLabels = from.DivisionLabels;
  if (target.AdjustDecPlaces) target.LabelDecimals = from.LabelDecimals;
}

double CrossingValue(const AxisState& axis, const AxisState& other) {
  switch (axis.Offset_type) {
    case OffsetType::OtherMax:
      return other.Max;
    case OffsetType::Percent: {
      const long double span = static_cast<long double>(other.Max) - other.Min;
      return static_cast<double>(other.Min + span * axis.Offset / 100);
    }
    case OffsetType::Value:
      return axis.Offset;
    case OffsetType::OtherMin:
      break;
  }
  return other.Min;
}

}  // namespace tarnwick
