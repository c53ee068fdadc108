#include "expr/block/block_op.h"

#include <algorithm>
#include <array>

#include "expr/words/added_procedures.h"
#include "expr/words/added_words.h"
#include "expr/words/builtin_words.h"
#include "expr/words/evaluation_procedures.h"

namespace tarnwick {
namespace {

void DivideUnguarded(TExprRec& rec) {
  rec.Res = *rec.Args[0] / *rec.Args[1];
}
void Mask(TExprRec& rec) {
  rec.Res = *rec.Args[0] != 0 ? *rec.Args[1] : 0;
}

// In the order of BlockOp.
constexpr std::array<ExprFunc, kBlockOpCount> kProcedures = {
    &Negate,
    &Absolute,
    &SquareRoot,
    &Exp,
    &Ln,
    &Sin,
    &Cos,
    &Tan,
    &Add,
    &Subtract,
    &Multiply,
    &Divide,
    &DivideUnguarded,
    &Mask,
    &Greater,
    &GreaterOrEqual,
    &LessOrEqual,
    &Less,
    &Unequal,
    &Equal,
    &Max,
    &Min,
    &FaddeevaRe,
    &FaddeevaReByX,
    &FaddeevaReByY,
};

}  // namespace

ExprFunc ScalarProcedure(BlockOp op) {
  return op == BlockOp::Call ? nullptr : kProcedures[static_cast<std::size_t>(op)];
}

std::optional<BlockOp> OperationOf(ExprFunc func) {
  const auto* const found = std::find(kProcedures.begin(), kProcedures.end(), func);
  if (found == kProcedures.end()) return std::nullopt;
  return static_cast<BlockOp>(found - kProcedures.begin());
}

bool IsPure(ExprFunc func) {
  if (func == &Assign || func == &NextRandom) return false;
  const auto does = [func](const BuiltinWord& word) { return word.func == func; };
  return std::ranges::any_of(BuiltinWords(), does) || std::ranges::any_of(AddedWords(), does);
}

}  // namespace tarnwick
