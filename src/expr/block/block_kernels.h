// Single operations on blocks in the best instruction set that this processor has. Knows arrays; nothing of expressions.
#pragma once

#include <array>
#include <cstddef>

#include "expr/block/block_op.h"

namespace tarnwick {

/// Computes out[i] from a[i] and b[i] for i below `count`, which is a multiple of kBlockPadding. Arrays need no alignment;
/// `out` may be `a` or `b`.
using BlockKernel = void (*)(const double* a, const double* b, double* out, std::size_t count);

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

}  // namespace tarnwick
