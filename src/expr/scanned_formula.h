// A formula cut into its words, for what looks at formulas without evaluating them. Knows the words of models and column
// expressions; compiles nothing.
#pragma once

#include <string_view>

#include "expr/words/expr_collection.h"
#include "expr/words/express_list.h"
#include "expr/words/o_collection.h"

namespace tarnwick {

/// The words, and what they live on.
class ScannedFormula {
 public:
  /// Scans up to the first trouble.
  explicit ScannedFormula(std::string_view formula);
  ScannedFormula(const ScannedFormula&) = delete;
  ScannedFormula& operator=(const ScannedFormula&) = delete;

  TExprCollection& Tokens() { return tokens_; }
  TExpressList& Words() { return words_; }
  bool IsWhole() const { return is_whole_; }

 private:
  TExpressList words_;
  TOCollection<TExprWord> constants_;
  TOCollection<TExprWord> displaced_;
  TExprCollection tokens_;
  bool is_whole_ = true;
};

}  // namespace tarnwick
