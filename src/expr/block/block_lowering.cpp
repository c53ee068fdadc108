#include "expr/block/block_lowering.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "expr/block/block_derivatives.h"
#include "expr/expression_parser.h"
#include "expr/words/added_procedures.h"
#include "expr/words/evaluation_procedures.h"
#include "expr/words/expr_word.h"

namespace tarnwick {
namespace {

constexpr int kNone = BlockGraph::kNone;
// Beyond this a program would neither fit a cache nor be worth its making.
constexpr std::size_t kMostNodes = 20000;

class Lowering {
 public:
  Lowering(const TExpressionParser& parser, const double* x,
           std::span<const double* const> variables)
      : parser_(parser), x_(x), variables_(variables) {
    for (const double* const address : parser.ConstantAddresses()) constants_.insert(address);
  }

  std::optional<BlockFunction> Run() && {
    if (parser_.CurrentRec() == nullptr) return std::nullopt;
    int last = kNone;
    for (const TExprRec* rec = parser_.CurrentRec(); rec != nullptr; rec = rec->Next) {
      last = Lower(*rec);
      if (last == kNone || Graph().Nodes().size() > kMostNodes) return std::nullopt;
      if (!variables_.empty()) Differentiate(last);
      results_[&rec->Res] = last;
    }
    function_.value = last;
    for (std::size_t j = 0; j < variables_.size(); ++j)
      function_.derivatives.push_back(DerivativeOf(last, j));
    return std::move(function_);
  }

 private:
  BlockGraph& Graph() { return function_.graph; }

  /// The node that stands for what lies at an address: a record's result, X, a variable or a constant.
  int Operand(const double* address) {
    if (address == nullptr) return kNone;
    if (const auto result = results_.find(address); result != results_.end()) return result->second;
    if (address == x_) return Graph().Abscissa();
    const auto chosen = std::find(variables_.begin(), variables_.end(), address);
    if (chosen != variables_.end())
      return Graph().Chosen(static_cast<int>(chosen - variables_.begin()), address);
    return constants_.contains(address) ? Graph().Constant(*address) : Graph().Variable(address);
  }

  /// The node of one record; kNone when it cannot be one.
  int Lower(const TExprRec& rec) {
    if (rec.Oper == &CompareStrings) return Graph().Record(rec);
    const int a = Operand(rec.Args[0]);
    if (rec.Oper == &LoadOperand) return a;
    if (!IsPure(rec.Oper)) return kNone;
    if (rec.Oper == &If) return LowerIf(a, Operand(rec.Args[1]), Operand(rec.Args[2]));
    if (rec.Oper == &Voigt) return LowerVoigt(a, Operand(rec.Args[1]), Operand(rec.Args[2]));
    return LowerPure(rec.Oper, a, Operand(rec.Args[1]));
  }

  int LowerPure(ExprFunc func, int a, int b) {
    BlockGraph& g = Graph();
    if (func == &Pi) return g.Constant(std::numbers::pi);
    if (func == &Identity) return a;
    if (func == &Square) return g.Apply(BlockOp::Multiply, a, a);
    if (func == &Percent) return g.Apply(BlockOp::Multiply, a, g.Constant(0.01));
    if (func == &DegToRad) return Scaled(a, std::numbers::pi, 180);
    if (func == &RadToDeg) return Scaled(a, 180, std::numbers::pi);
    if (func == &Power || func == &IntPower) return LowerPower(func, a, b);
    if (const std::optional<BlockOp> op = OperationOf(func))
      return TakesOneArgument(*op) ? g.Apply(*op, a) : g.Apply(*op, a, b);
    return g.Call(func, a, b);
  }

  /// The sum of both, each where it is chosen and else zero; 0 / 0 where the condition is undefined.
  int LowerIf(int condition, int a, int b) {
    BlockGraph& g = Graph();
    const int zero = g.Constant(0);
    const int other = g.Apply(BlockOp::Add, g.Apply(BlockOp::Greater, condition, zero),
                              g.Apply(BlockOp::Greater, zero, condition));
    const int none = g.Apply(BlockOp::Multiply, g.Apply(BlockOp::Less, condition, zero),
                             g.Apply(BlockOp::Less, zero, condition));
    const int chosen = g.Apply(BlockOp::Add, g.Apply(BlockOp::Masked, other, a),
                               g.Apply(BlockOp::Masked, none, b));
    return g.Apply(BlockOp::Quotient, chosen, g.Apply(BlockOp::Add, other, none));
  }

  /// As VoigtOf has it. |gamma| by the greater of it and its negative, whose slope at 0 is that to the right: a fit that starts
  /// with gamma at its bound 0 must be able to leave it.
  int LowerVoigt(int x, int sigma, int gamma) {
    BlockGraph& g = Graph();
    const int width = g.Apply(BlockOp::Multiply, g.Apply(BlockOp::Absolute, sigma),
                              g.Constant(std::numbers::sqrt2));
    const int half_width =
        g.Apply(BlockOp::Max, gamma, g.Apply(BlockOp::Multiply, gamma, g.Constant(-1)));
    const int profile = g.Apply(BlockOp::FaddeevaRe, g.Apply(BlockOp::Quotient, x, width),
                                g.Apply(BlockOp::Quotient, half_width, width));
    return g.Apply(BlockOp::Quotient, profile,
                   g.Apply(BlockOp::Multiply, width, g.Constant(std::sqrt(std::numbers::pi))));
  }

  int Scaled(int a, double factor, double divisor) {
    BlockGraph& g = Graph();
    return g.Apply(BlockOp::Quotient, g.Apply(BlockOp::Multiply, a, g.Constant(factor)),
                   g.Constant(divisor));
  }

  /// Small whole powers as the products that IntegerPower forms.
  int LowerPower(ExprFunc func, int a, int b) {
    BlockGraph& g = Graph();
    if (!g.IsConstant(b)) return g.Call(func, a, b);
    const double written = g.Node(b).constant;
    const double exponent = func == &IntPower ? std::nearbyint(written) : written;
    const bool whole = exponent == std::trunc(exponent);
    if (!whole || std::abs(exponent) > static_cast<double>(kLargestProductPower) ||
        (func == &Power && exponent < -1))
      return g.Call(func, a, b);
    int product = kNone;
    int square = a;
    for (int n = static_cast<int>(std::abs(exponent)); n > 0; n >>= 1) {
      if (n & 1) product = product == kNone ? square : g.Apply(BlockOp::Multiply, product, square);
      if (n > 1) square = g.Apply(BlockOp::Multiply, square, square);
    }
    if (product == kNone) return g.Constant(1);
    return exponent < 0 ? g.Reciprocal(product) : product;
  }

  int DerivativeOf(int node, std::size_t variable) {
    const auto found = derivatives_.find(node);
    return found == derivatives_.end() ? kNone : found->second[variable];
  }

  /// Carries the derivatives forward from a node's arguments, right behind its value, so that what both share is still at
  /// hand when it is computed.
  void Differentiate(int node) {
    if (node == kNone || derivatives_.contains(node)) return;
    const BlockNodeKind kind = Graph().Node(node).kind;
    const auto [a, b] = Graph().Node(node).args;
    std::vector<int> derivatives(variables_.size(), kNone);
    if (kind == BlockNodeKind::Chosen) {
      derivatives[Index(Graph().Node(node).chosen)] = Graph().Constant(1);
    } else if (kind == BlockNodeKind::Operation) {
      // Arguments of other records have theirs: only what this record was split into is still to do.
      Differentiate(a);
      Differentiate(b);
      for (std::size_t j = 0; j < derivatives.size(); ++j) {
        const int da = DerivativeOf(a, j);
        derivatives[j] = Derivative(Graph(), node, da, DerivativeOf(b, j));
      }
    }
    derivatives_.emplace(node, std::move(derivatives));
  }

  const TExpressionParser& parser_;
  const double* x_;
  std::span<const double* const> variables_;
  std::unordered_set<const double*> constants_;
  BlockFunction function_;
  std::unordered_map<const double*, int> results_;
  std::unordered_map<int, std::vector<int>> derivatives_;  // of a node, by variable
};

}  // namespace

std::optional<BlockFunction> LowerExpression(const TExpressionParser& parser, const double* x,
                                             std::span<const double* const> variables) {
  return Lowering(parser, x, variables).Run();
}

}  // namespace tarnwick
