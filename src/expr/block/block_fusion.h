// Which operations of a graph are computed in one go with the one that uses them. Knows the graph; nothing of memory and
// instruction sets.
#pragma once

#include <span>
#include <vector>

#include "expr/block/block_graph.h"

namespace tarnwick {

/// Pairs of operations, the inner one used by the outer one alone. By node; BlockGraph::kNone where there is none.
struct BlockFusion {
  std::vector<int> outer_of;  ///< the operation that computes this one, too
  std::vector<int> inner_of;  ///< the operation that this one computes, too
};

/// Chooses pairs (sums, differences and products within these, within negations, and as dividends) among the nodes that
/// `needed` tells (not kNone where a node is needed). Results are nobody's inner operation.
BlockFusion FuseOperations(const BlockGraph& graph, std::span<const int> needed,
                           std::span<const int> results);

}  // namespace tarnwick
