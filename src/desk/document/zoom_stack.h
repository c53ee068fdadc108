// The way back through the scales of a graph. Knows the three axes' states; never mixes with edits of the graph.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
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

/// Those of a graph and of each graph inserted into it.
class ZoomStacks {
 public:
  /// That of an inserted graph; of the whole for nothing, or when there is no such graph.
  ZoomStack& Of(std::optional<std::size_t> child);
  void Clear();
  /// The graph has so many inserted graphs now. When their number changed, their ways back are forgotten: whose scales
  /// they are cannot be told any more.
  void FollowChildren(std::size_t count);

 private:
  std::vector<ZoomStack> stacks_ = std::vector<ZoomStack>(1);  // the first is the whole graph's
};

}  // namespace tarnwick
