#include "results/second_axis.h"

#include <algorithm>
#include <cstdint>

#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {

void ShowSecondAxis(TxyGraph& graph) {
  constexpr std::int32_t kMargin = 55;
  TAxis& axis = graph.Axis(AxisId::Y2);
  if (!AxisInUse(graph, AxisId::Y2) && !axis.Look().ShowAxis) {
    axis.SetAutoSizing(true);
    axis.SetAdjustDecPlaces(true);
    SetLook(axis, &AxisLook::EnableAutoTitle, true);
  }
  SetLook(axis, &AxisLook::ShowAxis, true);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.right_margin = std::max(dimensions.right_margin, kMargin);
  graph.SetDimensions(dimensions);
}

}  // namespace tarnwick
