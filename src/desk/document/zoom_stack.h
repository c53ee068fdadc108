// The way back through the scales of a graph. Knows the three axes' states; never mixes with edits of the graph.
#pragma once

#include <array>
#include <vector>

#include "graph/axes/axis_state.h"

namespace tarnwick {

class TxyGraph;

class ZoomStack {
 public:
  /// Keeps the present scales to come back to. Scales equal to those kept last are not kept twice.
  void Remember(const TxyGraph& graph);
  /// Returns to the scales kept last; nothing happens without any.
  void GoBack(TxyGraph& graph);
  bool IsEmpty() const { return kept_.empty(); }
  void Clear() { kept_.clear(); }

 private:
  using Scales = std::array<AxisState, 3>;
  std::vector<Scales> kept_;
};

}  // namespace tarnwick
