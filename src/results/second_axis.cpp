#include "results/second_axis.h"

#include <algorithm>
#include <cstdint>

#include "graph/xy_graph.h"

namespace tarnwick {

void ShowSecondAxis(TxyGraph& graph) {
  constexpr std::int32_t kMargin = 55;
  TAxis& axis = graph.Axis(AxisId::Y2);
  if (!graph.AxisInUse(AxisId::Y2) && !axis.ShowAxis()) {
    axis.SetAutoSizing(true);
    axis.SetAdjustDecPlaces(true);
    axis.SetEnableAutoTitle(true);
  }
  axis.SetShowAxis(true);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.right_margin = std::max(dimensions.right_margin, kMargin);
  graph.SetDimensions(dimensions);
}

}  // namespace tarnwick
