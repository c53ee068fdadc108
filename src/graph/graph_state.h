// Everything a graph is, as a value: copies share point chunks. Undo, autosave, files and worker threads hold it. Knows no
// graph object, no listener and no size.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "data/series/data_state.h"
#include "graph/appearance.h"
#include "graph/axes/axis_state.h"
#include "graph/mark.h"
#include "graph/series_style.h"

namespace tarnwick {

/// One DataSet of a graph: its data and how it is drawn.
struct SeriesState {
  SeriesStyle style;
  DataState data;
};

/// As constructed: a new graph.
struct GraphState {
  Appearance appearance;
  Dimensions dimensions;
  std::array<AxisState, 3> axes = {DefaultAxisState(AxisId::X), DefaultAxisState(AxisId::Y),
                                   DefaultAxisState(AxisId::Y2)};
  Legend legend;
  std::vector<SeriesState> series;
  MarkList marks;
  std::vector<std::shared_ptr<const GraphState>>
      children;  ///< their place stands in their dimensions
};

}  // namespace tarnwick
