// Operations on blocks in the best instruction set that this processor has. Knows arrays; nothing of expressions.
#pragma once

#include <array>
#include <cstddef>

#include "expr/block/block_op.h"

namespace tarnwick {

/// Computes out[i] from a[i] and b[i] for i below `count`, which is a multiple of kBlockPadding. Arrays need no alignment;
/// `out` may be `a` or `b`.
using BlockKernel = void (*)(const double* a, const double* b, double* out, std::size_t count);

/// Every instruction set's vectors divide this many values evenly.
inline constexpr std::size_t kBlockPadding = 8;

/// One operation, by which of its arguments is one number for all (the first element) rather than an array. Operations of
/// one argument have `arrays` alone.
struct BlockKernels {
  BlockKernel arrays = nullptr;
  BlockKernel uniform_first = nullptr;
  BlockKernel uniform_second = nullptr;
};

using BlockKernelTable = std::array<BlockKernels, kBlockOpCount>;

/// The table for this processor.
const BlockKernelTable& BestBlockKernels();

/// Computes two operations at once, each rounded by itself, as BlockKernel does.
using FusedKernel = void (*)(const double* a, const double* b, const double* c, double* out,
                             std::size_t count);

/// (a inner b) outer c, or c outer (a inner b). The inner operation is Add, Subtract or Multiply, the outer one these, Divide
/// (not with inner_second) or Negate, which only needs a readable c.
struct FusedOperation {
  BlockOp inner = BlockOp::Add;
  BlockOp outer = BlockOp::Add;
  bool inner_second = false;  ///< the inner result is the second argument of the outer operation
  bool uniform_a = false;     ///< one number for all
  bool uniform_b = false;     ///< not both of a and b are one
  bool uniform_c = false;
};

FusedKernel BestFusedKernel(const FusedOperation& operation);

}  // namespace tarnwick
