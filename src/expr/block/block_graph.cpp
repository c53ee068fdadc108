#include "expr/block/block_graph.h"

#include <bit>

namespace tarnwick {

bool BlockGraph::IsConstant(int index, double value) const {
  return index != kNone && IsConstant(index) && Node(index).constant == value;
}

int BlockGraph::Find(const Key& key, const BlockNode& node) {
  const auto [place, added] = known_.try_emplace(key, static_cast<int>(nodes_.size()));
  if (added) nodes_.push_back(node);
  return place->second;
}

int BlockGraph::Abscissa() {
  BlockNode node;
  node.kind = BlockNodeKind::Abscissa;
  node.uniform = false;
  return Find({node.kind, node.op, nullptr, kNone, kNone, 0, nullptr}, node);
}

int BlockGraph::Constant(double value) {
  BlockNode node;
  node.constant = value;
  return Find(
      {node.kind, node.op, nullptr, kNone, kNone, std::bit_cast<std::uint64_t>(value), nullptr},
      node);
}

int BlockGraph::Variable(const double* source) {
  BlockNode node;
  node.kind = BlockNodeKind::Variable;
  node.source = source;
  return Find({node.kind, node.op, nullptr, kNone, kNone, 0, source}, node);
}

int BlockGraph::Chosen(int number, const double* source) {
  BlockNode node;
  node.kind = BlockNodeKind::Chosen;
  node.chosen = number;
  node.source = source;
  return Find({node.kind, node.op, nullptr, number, kNone, 0, nullptr}, node);
}

int BlockGraph::Record(const TExprRec& record) {
  BlockNode node;
  node.kind = BlockNodeKind::Record;
  node.record = record;
  nodes_.push_back(node);
  return static_cast<int>(nodes_.size()) - 1;
}

int BlockGraph::Operation(BlockOp op, ExprFunc func, int a, int b) {
  BlockNode node;
  node.kind = BlockNodeKind::Operation;
  node.op = op;
  node.func = func;
  node.args = {a, b};
  node.uniform = (a == kNone || Node(a).uniform) && (b == kNone || Node(b).uniform);
  return Find({node.kind, op, func, a, b, 0, nullptr}, node);
}

int BlockGraph::Apply(BlockOp op, int a, int b) {
  const ExprFunc func = ScalarProcedure(op);
  if (!IsConstant(a) || (b != kNone && !IsConstant(b))) return Operation(op, func, a, b);
  double first = Node(a).constant;
  double second = b == kNone ? 0 : Node(b).constant;
  TExprRec record;
  record.Args[0] = &first;
  record.Args[1] = &second;
  func(record);
  return Constant(record.Res);
}

int BlockGraph::Call(ExprFunc func, int a, int b) {
  return Operation(BlockOp::Call, func, a, b);
}

int BlockGraph::Plus(int a, int b) {
  if (a == kNone) return b;
  if (b == kNone) return a;
  return Apply(BlockOp::Add, a, b);
}

int BlockGraph::Minus(int a, int b) {
  if (b == kNone) return a;
  if (a == kNone) return Negative(b);
  return Apply(BlockOp::Subtract, a, b);
}

int BlockGraph::Times(int a, int b) {
  if (a == kNone || b == kNone) return kNone;
  if (IsConstant(a, 1)) return b;
  if (IsConstant(b, 1)) return a;
  if (IsConstant(a, -1)) return Negative(b);
  if (IsConstant(b, -1)) return Negative(a);
  return Apply(BlockOp::Multiply, a, b);
}

int BlockGraph::Negative(int a) {
  if (a == kNone) return kNone;
  const BlockNode& node = Node(a);
  const bool negation = node.kind == BlockNodeKind::Operation && node.op == BlockOp::Negate;
  return negation ? node.args[0] : Apply(BlockOp::Negate, a);
}

int BlockGraph::Reciprocal(int a) {
  return Apply(BlockOp::Quotient, Constant(1), a);
}

}  // namespace tarnwick
