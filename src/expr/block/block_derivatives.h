// The rules of differentiation for block operations. Knows one operation at a time.
#pragma once

#include "expr/block/block_graph.h"

namespace tarnwick {

/// The derivative of node `y`, an operation, where `da` and `db` are the derivatives of its arguments. kNone stands for
/// zero. Steps (round, comparisons, not ...) have derivative zero.
int Derivative(BlockGraph& graph, int y, int da, int db);

}  // namespace tarnwick
