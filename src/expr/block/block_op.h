// The elementary operations of block evaluation and which procedures they stand for. Knows no expression.
#pragma once

#include <cstdint>
#include <optional>

#include "expr/words/expr_rec.h"

namespace tarnwick {

/// An operation on whole blocks. Each but Quotient and Masked does what the built-in word of its name does.
enum class BlockOp : std::uint8_t {
  // One argument.
  Negate,
  Absolute,
  SquareRoot,
  Exp,
  Ln,
  Sin,
  Cos,
  Tan,
  // Two arguments.
  Add,
  Subtract,
  Multiply,
  Divide,
  Quotient,  ///< a / b as the processor gives it
  Masked,    ///< b where a is not zero, else zero
  Greater,
  GreaterOrEqual,
  LessOrEqual,
  Less,
  Unequal,
  Equal,
  Max,
  Min,
  // Of voigt.
  FaddeevaRe,
  FaddeevaReByX,
  FaddeevaReByY,
  // Any procedure, value by value.
  Call,
};
inline constexpr int kBlockOpCount = static_cast<int>(BlockOp::Call);

constexpr bool TakesOneArgument(BlockOp op) {
  return op <= BlockOp::Tan;
}

/// What the operation does to single values. Null for Call.
ExprFunc ScalarProcedure(BlockOp op);

/// The operation that does what `func` does; nothing when there is none but Call.
std::optional<BlockOp> OperationOf(ExprFunc func);

/// True when `func` is a built-in or added word whose result depends on its arguments alone.
bool IsPure(ExprFunc func);

}  // namespace tarnwick
