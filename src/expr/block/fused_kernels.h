// Pairs of operations on blocks, computed in one go, in the best instruction set that this processor has. Knows arrays;
// nothing of expressions.
#pragma once

#include <cstddef>

#include "expr/block/block_op.h"

namespace tarnwick {

/// Computes two operations at once, each rounded by itself, as BlockKernel does.
using FusedKernel = void (*)(const double* a, const double* b, const double* c, double* out,
                             std::size_t count);

/// (a inner b) outer c, or c outer (a inner b). The inner operation is Add, Subtract or Multiply, the outer one these, Divide
/// (not with inner_second) or Negate, which only needs a readable c.
struct FusedOperation {
  BlockOp inner = BlockOp::Add;
  BlockOp outer = BlockOp::Add;
  bool inner_second = false;  ///< the inner result is the second argument of the outer operation
  bool uniform_a = false;     ///< one number for all, only of a difference
  bool uniform_b = false;     ///< one number for all; not both of a and b are
  bool uniform_c = false;
};

FusedKernel BestFusedKernel(const FusedOperation& operation);

}  // namespace tarnwick
