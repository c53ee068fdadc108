// The operations of one expression and of its derivatives as a graph in which nothing is computed twice. Knows how
// operations simplify; nothing of words, memory and instruction sets.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <tuple>
#include <vector>

#include "expr/block/block_op.h"
#include "expr/words/expr_rec.h"

namespace tarnwick {

/// A node's, variable's or array's number as an index.
constexpr std::size_t Index(int number) {
  return static_cast<std::size_t>(number);
}

enum class BlockNodeKind : std::uint8_t {
  Abscissa,   ///< the independent variable: one value per point
  Constant,   ///< a number known for good
  Variable,   ///< read from an address when values are loaded
  Chosen,     ///< one of the variables to differentiate by
  Record,     ///< a record of the chain without arguments, run when values are loaded
  Operation,  ///< of one or two other nodes
};

struct BlockNode {
  BlockNodeKind kind = BlockNodeKind::Constant;
  BlockOp op = BlockOp::Call;
  bool uniform = true;  ///< the same for all points
  ExprFunc func = nullptr;
  std::array<int, 2> args = {-1, -1};
  double constant = 0;
  const double* source = nullptr;
  int chosen = -1;
  TExprRec record;
};

/// Nodes are numbered so that arguments come before what uses them; -1 is none, and stands for zero among derivatives.
class BlockGraph {
 public:
  static constexpr int kNone = -1;

  std::span<const BlockNode> Nodes() const { return nodes_; }
  const BlockNode& Node(int index) const { return nodes_[Index(index)]; }
  bool IsConstant(int index) const { return Node(index).kind == BlockNodeKind::Constant; }
  bool IsConstant(int index, double value) const;

  int Abscissa();
  int Constant(double value);
  int Variable(const double* source);
  int Chosen(int number, const double* source);
  int Record(const TExprRec& record);
  int Apply(BlockOp op, int a, int b = kNone);
  int Call(ExprFunc func, int a, int b = kNone);

  // For derivatives: kNone is zero, and products with 1 and -1 are not computed.
  int Plus(int a, int b);
  int Minus(int a, int b);
  int Times(int a, int b);
  int Negative(int a);
  int Reciprocal(int a);

 private:
  // Kind, operation, procedure, arguments, bits of a constant or number, address.
  using Key = std::tuple<BlockNodeKind, BlockOp, ExprFunc, int, int, std::uint64_t, const double*>;

  int Find(const Key& key, const BlockNode& node);
  int Operation(BlockOp op, ExprFunc func, int a, int b);

  std::vector<BlockNode> nodes_;
  std::map<Key, int> known_;
};

}  // namespace tarnwick
