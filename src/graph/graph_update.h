// Many changes of a graph as one: what it computes from itself and what it tells waits for the end. Knows nothing else.
#pragma once

#include "graph/xy_graph.h"

namespace tarnwick {

/// While one lives, the graph recomputes no scales and tells nobody; then it tells Everything. Nests.
class GraphUpdate {
 public:
  explicit GraphUpdate(TxyGraph& graph) : graph_(graph) { graph_.BeginUpdate(); }
  ~GraphUpdate() { graph_.EndUpdate(); }
  GraphUpdate(const GraphUpdate&) = delete;
  GraphUpdate& operator=(const GraphUpdate&) = delete;

 private:
  TxyGraph& graph_;
};

}  // namespace tarnwick
