// The panel under the plot: its part of the room between the margins, and its Y axis, which scales itself. Knows ranges and
// pixels, no graph.
#pragma once

#include "graph/axes/axis_state.h"

namespace tarnwick {

/// Pixels from the top of that room: the plot ends, a gap, the panel from there to the end of the room.
struct PanelPlace {
  double plot_end = 0;
  double panel_begin = 0;
};

/// The panel has a quarter of a room of this height.
PanelPlace PlaceOfPanel(double height);

/// An axis for values from `low` to `high`, finite ones: with zero inside, and as far above it as below where both occur.
AxisState PanelAxisFor(double low, double high);

}  // namespace tarnwick
