// Finds out which word works on which: the tree of one expression, and the chain of records made from it. Knows priorities
// and brackets; nothing of texts and dictionaries.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "expr/words/expr_collection.h"
#include "expr/words/expr_rec.h"

namespace tarnwick {

/// How deep brackets, arguments and operands may be nested.
inline constexpr int kMostNested = 1000;

class ExpressionTree {
 public:
  /// Builds the tree. Throws EParserException; `shown_text` is what its messages quote. Both must outlive the tree.
  ExpressionTree(const TExprCollection& tokens, std::string_view shown_text);

  /// The records in the order of evaluation, arguments before what uses them, linked by Next. Throws EParserException where
  /// an argument is missing or is no number.
  std::vector<TExprRec> MakeLinkedList() const;

 private:
  static constexpr int kNone = -1;

  struct Node {
    std::size_t token = 0;
    int argument_count = 0;
    std::array<int, kMaxArgs> arguments = {};

    int Argument(int slot) const {
      return slot < argument_count ? arguments[static_cast<std::size_t>(slot)] : kNone;
    }
  };

  struct Range {
    std::size_t first = 0;
    std::size_t last = 0;  // one past the end
    bool IsEmpty() const { return first >= last; }
    std::size_t Length() const { return last - first; }
  };

  int MakeTree(Range range, int depth);
  Range WithoutExtraBrackets(Range range) const;
  std::size_t NextOper(std::size_t from, std::size_t last, int least_priority) const;
  std::size_t FirstComma(Range range) const;
  std::size_t AddBracketedArguments(Range range, std::size_t function, int depth, Node& node);
  void AddArgument(Node& node, Range range, int depth);
  [[noreturn]] void FailAt(std::size_t token) const;

  bool IsOperand(const Node& node) const;
  double* OperandStorage(const Node& node) const;
  const Node& LinkedArgument(const Node& node, int slot) const;
  std::vector<int> EvaluationOrder() const;

  const TExprCollection& tokens_;
  std::string_view shown_text_;
  std::vector<std::size_t> matching_;
  std::vector<Node> nodes_;
  int root_ = kNone;
};

}  // namespace tarnwick
