// Evaluates a compiled expression over many X at once, with exact derivatives by chosen variables. Knows no points, no
// fit and no thread; agrees with the record-by-record evaluation to a few units in the last place.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace tarnwick {

class TExpressionParser;
class BlockProgram;

/// X values that are evaluated together, so that all intermediate results stay in the first cache.
inline constexpr std::size_t kBlockLength = 256;

/// Values and derivatives of one block. Valid until the evaluator is used again. Reading up to the next multiple of
/// eight is safe; what lies beyond the block's X is arbitrary.
struct BlockResult {
  const double* values = nullptr;
  std::span<const double* const> derivatives;  ///< one array per chosen variable
};

/// The expression that stood current in the parser when it was made. The numbers it computes with are those of the last
/// Load. Copies share the program and have memory of their own: one per thread.
class BlockEvaluator {
 public:
  /// Takes the parser's current expression, its independent variable and the variables to differentiate by, each named by
  /// the address it is bound to. Null when the expression does not lend itself to blocks: there is none, its value
  /// depends on the order of evaluation (an assignment, random), it uses words that are not built in, or it is too long.
  static std::unique_ptr<BlockEvaluator> Make(const TExpressionParser& parser, const double* x,
                                              std::span<const double* const> variables = {});
  BlockEvaluator(const BlockEvaluator& other);
  BlockEvaluator& operator=(const BlockEvaluator&) = delete;
  ~BlockEvaluator();

  /// Reads every variable from the address it is bound to. Parser and variables must still live. Throws
  /// EIntegerDivision.
  void Load();
  /// The same, but takes the chosen variables from `variables`, in the order given to Make.
  void Load(std::span<const double> variables);

  /// The values at up to kBlockLength X. Throws EIntegerDivision.
  BlockResult Values(std::span<const double> x);
  /// Values and derivatives at up to kBlockLength X. Throws EIntegerDivision.
  BlockResult Derivatives(std::span<const double> x);

  /// The values at any number of X, written to `values` of the same length, which must lie apart from `x`. Throws
  /// EIntegerDivision.
  void Values(std::span<const double> x, std::span<double> values);

 private:
  struct Workspace;
  explicit BlockEvaluator(std::shared_ptr<const BlockProgram> program);

  std::shared_ptr<const BlockProgram> program_;
  std::unique_ptr<Workspace> work_;
};

}  // namespace tarnwick
