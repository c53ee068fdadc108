#include "results/second_axis.h"

#include <algorithm>
#include <cstdint>

#include "graph/xy_graph.h"

namespace tarnwick {

void ShowSecondAxis(TxyGraph& graph) {
  constexpr std::int32_t kMargin = 55;
  graph.Axis(AxisId::Y2).SetShowAxis(true);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.right_margin = std::max(dimensions.right_margin, kMargin);
  graph.SetDimensions(dimensions);
}

}  // namespace tarnwick
