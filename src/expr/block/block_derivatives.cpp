#include "expr/block/block_derivatives.h"

#include <numbers>

#include "base/undefined.h"
#include "expr/words/added_procedures.h"
#include "expr/words/evaluation_procedures.h"

namespace tarnwick {
namespace {

constexpr int kNone = BlockGraph::kNone;

/// y times ln(a), and zero where y is: the limit of a^b ln(a) at a = 0.
int ScaledLn(BlockGraph& g, int y, int a) {
  return g.Apply(BlockOp::Masked, y, g.Times(y, g.Apply(BlockOp::Ln, a)));
}

/// d a^b = b a^(b-1) da + a^b ln(a) db
int OfPower(BlockGraph& g, int y, int a, int b, int da, int db) {
  int result = kNone;
  if (da != kNone) {
    const int less = g.Apply(BlockOp::Subtract, b, g.Constant(1));
    result = g.Times(g.Times(b, g.Call(&Power, a, less)), da);
  }
  return db == kNone ? result : g.Plus(result, g.Times(ScaledLn(g, y, a), db));
}

/// d a^n = n a^(n-1) da, n rounded
int OfIntPower(BlockGraph& g, int a, int b, int da) {
  if (da == kNone) return kNone;
  const int n = g.Call(&Round, b);
  const int less = g.Apply(BlockOp::Subtract, n, g.Constant(1));
  return g.Times(g.Times(n, g.Call(&IntPower, a, less)), da);
}

/// d (ln b / ln a) = db / (b ln a) - y da / (a ln a)
int OfLogN(BlockGraph& g, int y, int a, int b, int da, int db) {
  const int ln = g.Apply(BlockOp::Ln, a);
  const int by_b = db == kNone ? kNone : g.Times(db, g.Reciprocal(g.Times(b, ln)));
  const int by_a = da == kNone ? kNone : g.Times(g.Times(y, da), g.Reciprocal(g.Times(a, ln)));
  return g.Minus(by_b, by_a);
}

/// d arctan2(a, b) = (b da - a db) / (a^2 + b^2)
int OfArcTan2(BlockGraph& g, int a, int b, int da, int db) {
  const int turn = g.Minus(g.Times(da, b), g.Times(a, db));
  if (turn == kNone) return kNone;
  return g.Times(turn, g.Reciprocal(g.Plus(g.Times(a, a), g.Times(b, b))));
}

/// d J_n(b) = (J_(n-1)(b) - J_(n+1)(b)) / 2 db, n rounded
int OfBesselJ(BlockGraph& g, int a, int b, int db) {
  if (db == kNone) return kNone;
  const int n = g.Call(&Round, a);
  const int one = g.Constant(1);
  const int less = g.Call(&BesselJ, g.Apply(BlockOp::Subtract, n, one), b);
  const int more = g.Call(&BesselJ, g.Apply(BlockOp::Add, n, one), b);
  return g.Times(g.Times(g.Constant(0.5), g.Minus(less, more)), db);
}

/// 2 exp(-a^2) / sqrt(pi), its sign as given
int BellOf(BlockGraph& g, double sign, int a) {
  const int bell = g.Apply(BlockOp::Exp, g.Apply(BlockOp::Negate, g.Times(a, a)));
  return g.Times(g.Constant(sign * 2 * std::numbers::inv_sqrtpi), bell);
}

/// 1 / sqrt(sum), its sign as given
int InverseRoot(BlockGraph& g, double sign, int sum) {
  return g.Apply(BlockOp::Quotient, g.Constant(sign), g.Apply(BlockOp::SquareRoot, sum));
}

/// The factor that the derivative of the argument takes, for procedures of one argument; kNone for steps.
int FactorOfCall(BlockGraph& g, ExprFunc func, int y, int a) {
  const int one = g.Constant(1);
  const int square = g.Times(a, a);
  if (func == &Log10) return g.Times(g.Constant(std::numbers::log10e), g.Reciprocal(a));
  if (func == &ArcSin) return InverseRoot(g, 1, g.Minus(one, square));
  if (func == &ArcCos) return InverseRoot(g, -1, g.Minus(one, square));
  if (func == &Sinh) return g.Call(&Cosh, a);
  if (func == &Cosh) return g.Call(&Sinh, a);
  if (func == &Tanh) return g.Minus(one, g.Times(y, y));
  if (func == &ArcSinh) return InverseRoot(g, 1, g.Plus(square, one));
  if (func == &ArcCosh) return InverseRoot(g, 1, g.Minus(square, one));
  if (func == &ArcTanh) return g.Reciprocal(g.Minus(one, square));
  if (func == &ArcTan) return g.Reciprocal(g.Plus(square, one));
  if (func == &Erf) return BellOf(g, 1, a);
  if (func == &Erfc) return BellOf(g, -1, a);
  if (func == &Gamma) return g.Times(y, g.Call(&Digamma, a));
  if (func == &LnGamma) return g.Call(&Digamma, a);
  return kNone;
}

int OfCall(BlockGraph& g, int y, int da, int db) {
  const ExprFunc func = g.Node(y).func;
  const auto [a, b] = g.Node(y).args;
  if (func == &Power) return OfPower(g, y, a, b, da, db);
  if (func == &IntPower) return OfIntPower(g, a, b, da);
  if (func == &LogN) return OfLogN(g, y, a, b, da, db);
  if (func == &ArcTan2) return OfArcTan2(g, a, b, da, db);
  if (func == &BesselJ) return OfBesselJ(g, a, b, db);
  return da == kNone ? kNone : g.Times(da, FactorOfCall(g, func, y, a));
}

int FactorOfUnary(BlockGraph& g, BlockOp op, int y, int a) {
  const int zero = g.Constant(0);
  switch (op) {
    case BlockOp::Negate:
      return g.Constant(-1);
    case BlockOp::Absolute:
      return g.Minus(g.Apply(BlockOp::Greater, a, zero), g.Apply(BlockOp::Greater, zero, a));
    case BlockOp::SquareRoot:
      return g.Apply(BlockOp::Quotient, g.Constant(0.5), y);
    case BlockOp::Exp:
      return y;
    case BlockOp::Ln:
      return g.Reciprocal(a);
    case BlockOp::Sin:
      return g.Apply(BlockOp::Cos, a);
    case BlockOp::Cos:
      return g.Negative(g.Apply(BlockOp::Sin, a));
    case BlockOp::Tan:
      return g.Plus(g.Constant(1), g.Times(y, y));
    default:
      return kNone;
  }
}

/// The derivative of the argument that is taken: `da` where `first` is not zero, else `db`.
int Selected(BlockGraph& g, int first, int da, int db) {
  const int by_a = da == kNone ? kNone : g.Apply(BlockOp::Masked, first, da);
  if (db == kNone) return by_a;
  return g.Plus(by_a, g.Apply(BlockOp::Masked, g.Minus(g.Constant(1), first), db));
}

int OfBinary(BlockGraph& g, int y, int da, int db) {
  const BlockOp op = g.Node(y).op;
  const auto [a, b] = g.Node(y).args;
  switch (op) {
    case BlockOp::Add:
      return g.Plus(da, db);
    case BlockOp::Subtract:
      return g.Minus(da, db);
    case BlockOp::Multiply:
      return g.Plus(g.Times(da, b), g.Times(a, db));
    case BlockOp::Divide:
    case BlockOp::Quotient: {
      const int numerator = g.Minus(da, g.Times(y, db));
      return numerator == kNone ? kNone : g.Times(numerator, g.Reciprocal(b));
    }
    case BlockOp::Masked:
      return db == kNone ? kNone : g.Apply(BlockOp::Masked, a, db);
    case BlockOp::Max:  // Less is true on equality: a is taken then
      return Selected(g, g.Apply(BlockOp::Less, b, a), da, db);
    case BlockOp::Min:
      return Selected(g, g.Minus(g.Constant(1), g.Apply(BlockOp::Greater, a, b)), da, db);
    case BlockOp::FaddeevaRe: {
      const int by_a = da == kNone ? kNone : g.Times(da, g.Apply(BlockOp::FaddeevaReByX, a, b));
      return db == kNone ? by_a : g.Plus(by_a, g.Times(db, g.Apply(BlockOp::FaddeevaReByY, a, b)));
    }
    default:
      return kNone;
  }
}

int OfOperation(BlockGraph& graph, int y, int da, int db) {
  const BlockNode& node = graph.Node(y);
  const BlockOp op = node.op;
  if (op == BlockOp::Call) return OfCall(graph, y, da, db);
  const int a = node.args[0];
  return TakesOneArgument(op) ? graph.Times(da, FactorOfUnary(graph, op, y, a))
                              : OfBinary(graph, y, da, db);
}

}  // namespace

int Derivative(BlockGraph& graph, int y, int da, int db) {
  if (da == kNone && db == kNone) return kNone;
  const int derivative = OfOperation(graph, y, da, db);
  // A difference of equal slopes is nothing, also where it meets an infinity.
  return graph.IsConstant(derivative, 0) ? kNone : derivative;
}

}  // namespace tarnwick
