#include "graph/graph_state_compare.h"

#include <algorithm>
#include <utility>

#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"

namespace tarnwick {
namespace {

bool SameMarks(const MarkList& left, const MarkList& right) {
  return std::equal(left.All().begin(), left.All().end(), right.All().begin(), right.All().end(),
                    [](const Mark& a, const Mark& b) { return FieldsEqual(MarkFields(), a, b); });
}

bool SameChildren(const GraphState& left, const GraphState& right) {
  return std::equal(left.children.begin(), left.children.end(), right.children.begin(),
                    right.children.end(),
                    [](const auto& a, const auto& b) { return a == b || SameState(*a, *b); });
}

void TakePlace(Dimensions& target, const Dimensions& from) {
  target.hor_position = from.hor_position;
  target.ver_position = from.ver_position;
  target.hor_size = from.hor_size;
  target.ver_size = from.ver_size;
}

void KeepScales(GraphState& target, const GraphState& present, const StateChange& edit) {
  for (std::size_t i = 0; i < target.axes.size(); ++i) {
    const bool edited = !SameScaleSettings(edit.before.axes[i], edit.after.axes[i]);
    // Where nobody zoomed since, the state's own numbers are kept to the last bit.
    if (edited || SameScaleSettings(target.axes[i], present.axes[i])) continue;
    TakeScale(target.axes[i], present.axes[i]);
  }
}

void KeepScalesOfChildren(GraphState& target, const GraphState& present, const StateChange& edit) {
  const std::size_t count = target.children.size();
  if (edit.before.children.size() != count || edit.after.children.size() != count ||
      present.children.size() != count) {
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    auto child = std::make_shared<GraphState>(*target.children[i]);
    const StateChange change{*edit.before.children[i], *edit.after.children[i]};
    KeepScales(*child, *present.children[i], change);
    KeepScalesOfChildren(*child, *present.children[i], change);
    target.children[i] = std::move(child);
  }
}

}  // namespace

bool SameState(const SeriesState& left, const SeriesState& right) {
  return FieldsEqual(SeriesFields(), left.style, right.style) && SameState(left.data, right.data);
}

bool SameState(const GraphState& left, const GraphState& right) {
  const auto same_axis = [](const AxisState& a, const AxisState& b) {
    return FieldsEqual(AxisFields(), a, b);
  };
  const auto same_series = [](const SeriesState& a, const SeriesState& b) {
    return SameState(a, b);
  };
  return FieldsEqual(AppearanceFields(), left.appearance, right.appearance) &&
         FieldsEqual(DimensionsFields(), left.dimensions, right.dimensions) &&
         FieldsEqual(LegendFields(), left.legend, right.legend) &&
         std::equal(left.axes.begin(), left.axes.end(), right.axes.begin(), same_axis) &&
         std::equal(left.series.begin(), left.series.end(), right.series.begin(),
                    right.series.end(), same_series) &&
         SameMarks(left.marks, right.marks) && SameChildren(left, right);
}

bool SameLook(const GraphState& left, const GraphState& right) {
  Appearance appearance = left.appearance;
  appearance.current_series_index = right.appearance.current_series_index;
  appearance.x_axis_series_index = right.appearance.x_axis_series_index;
  Dimensions dimensions = left.dimensions;
  TakePlace(dimensions, right.dimensions);
  const auto same_style = [](const SeriesState& a, const SeriesState& b) {
    return FieldsEqual(SeriesFields(), a.style, b.style);
  };
  constexpr auto kY2 = static_cast<std::size_t>(AxisId::Y2);
  return FieldsEqual(AppearanceFields(), appearance, right.appearance) &&
         FieldsEqual(DimensionsFields(), dimensions, right.dimensions) &&
         FieldsEqual(LegendFields(), left.legend, right.legend) &&
         left.axes[kY2].ShowAxis == right.axes[kY2].ShowAxis &&
         (left.series.size() != right.series.size() ||
          std::equal(left.series.begin(), left.series.end(), right.series.begin(), same_style));
}

bool SameScaleSettings(const AxisState& left, const AxisState& right) {
  const bool same_range =
      left.AutoSizing || (SameValue(left.Min, right.Min) && SameValue(left.Max, right.Max));
  const bool same_step = left.AutoStepping || SameValue(left.StepSize, right.StepSize);
  return left.AutoSizing == right.AutoSizing && left.AutoStepping == right.AutoStepping &&
         left.LogScale == right.LogScale && left.ShowAsTime == right.ShowAsTime && same_range &&
         same_step;
}

void KeepView(GraphState& target, const GraphState& present, const StateChange& edit) {
  KeepScales(target, present, edit);
  KeepScalesOfChildren(target, present, edit);
  TakePlace(target.dimensions, present.dimensions);
}

}  // namespace tarnwick
