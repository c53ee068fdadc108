// Block operations as a list of instructions over numbered memory. Knows which memory is free when; nothing of words.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "expr/block/block_kernels.h"
#include "expr/block/block_lowering.h"
#include "expr/block/fused_kernels.h"

namespace tarnwick {

/// Where an instruction finds or leaves values: the X of the block, an array of the workspace, or one number for all.
struct BlockPlace {
  enum class Kind : unsigned char { Abscissa, Array, Uniform };
  Kind kind = Kind::Abscissa;
  int number = 0;  ///< of the array or the uniform
};

/// One of `fused`, `kernel` and, where both are null, `func`, value by value.
struct BlockInstruction {
  FusedKernel fused = nullptr;  ///< takes `c`, too
  BlockKernel kernel = nullptr;
  ExprFunc func = nullptr;
  BlockPlace a;
  BlockPlace b;
  BlockPlace c;
  int array = 0;  ///< takes the result
};

/// Instructions and where their results are found.
struct BlockListing {
  std::vector<BlockInstruction> instructions;
  std::vector<BlockPlace> results;
  int arrays = 0;  ///< how many arrays they need
};

/// One number for all, computed when values are loaded.
struct UniformStep {
  BlockNode node;  ///< its arguments are numbers of uniforms
};

class BlockProgram {
 public:
  explicit BlockProgram(const BlockFunction& function);

  const std::vector<UniformStep>& Uniforms() const { return uniforms_; }
  /// The value alone.
  const BlockListing& Value() const { return value_; }
  /// The value, then each derivative.
  const BlockListing& Derivatives() const { return derivatives_; }
  int Variables() const { return variables_; }

 private:
  BlockListing List(const BlockGraph& graph, std::span<const int> results);
  BlockPlace UniformPlace(const BlockGraph& graph, int node);

  std::vector<UniformStep> uniforms_;
  std::vector<int> uniform_numbers_;  // by node
  BlockListing value_;
  BlockListing derivatives_;
  int variables_ = 0;
};

}  // namespace tarnwick
