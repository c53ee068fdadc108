// Makes block operations of a chain of records. Knows what each built-in word comes to; nothing of how blocks are
// computed.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "expr/block/block_graph.h"

namespace tarnwick {

class TExpressionParser;

/// An expression as operations on blocks, with its derivatives.
struct BlockFunction {
  BlockGraph graph;
  int value = BlockGraph::kNone;
  std::vector<int> derivatives;  ///< one per chosen variable; kNone where it is zero
};

/// The parser's current expression with the variables at the given addresses. Nothing when its value depends on the order
/// of evaluation, it uses words that are not built in, or it is too long.
std::optional<BlockFunction> LowerExpression(const TExpressionParser& parser, const double* x,
                                             std::span<const double* const> variables);

}  // namespace tarnwick
