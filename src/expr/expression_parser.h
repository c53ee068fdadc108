// Compiles expressions in named variables and evaluates them as often as wanted. Knows words, texts and chains of
// records; nothing of fits, files or points. Used from one thread.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "expr/words/expr_rec.h"
#include "expr/words/express_list.h"

namespace tarnwick {

/// The longest text in bytes that is compiled: no formula comes near it, and it bounds time and memory for any text.
inline constexpr std::size_t kLongestExpression = 250'000;

class TExpressionParser {
 public:
  TExpressionParser();
  virtual ~TExpressionParser();
  TExpressionParser(const TExpressionParser&) = delete;
  TExpressionParser& operator=(const TExpressionParser&) = delete;

  /// Makes `text` the current expression and answers its index; a text met before (whatever its case) is not compiled
  /// again. -1 for an empty text, which changes nothing. Throws EParserException when the text cannot be compiled: the
  /// expression to evaluate is then the one before.
  int CompileExpression(std::string_view text);

  /// The value of the current expression; undefined when there is none. Allocates nothing. Throws EIntegerDivision.
  double Evaluate();

  /// Binds `name` (whatever its case) to the caller's double, in place of any word of that name, built-in ones too. The
  /// double must live while an expression using it may be evaluated. Expressions compiled before keep what they had.
  void DefineVariable(std::string_view name, double* address);
  /// Unbinds the variable of that name; false when there is none. Expressions compiled before still read it.
  bool RemoveVariable(std::string_view name);
  /// Unbinds every variable; generated ones stay.
  void RemoveAllVariables();
  /// Fills `list` with the bound variables in alphabetical order.
  void GetVariables(std::vector<std::reference_wrapper<const TDoubleVariable>>& list);
  /// The variables that expressions use and nobody defined, in alphabetical order.
  std::vector<std::reference_wrapper<const TGeneratedVariable>> GeneratedVariables();
  /// The names among them that no compiled expression assigns: they stay undefined.
  std::vector<std::string> UnassignedNames();

  /// Forgets every compiled expression; there is no current one then.
  void ClearExpressions();

  /// The text given last to CompileExpression.
  const std::string& CurrentText() const { return current_text_; }
  /// The first record of the current expression; null when there is none.
  const TExprRec* CurrentRec() const { return current_rec_; }
  /// The storage of every number written in an expression.
  std::vector<const double*> ConstantAddresses() const;

 protected:
  /// Puts the built-in words into WordList(); a derived class may add its own. Called once, before the first use of any
  /// word.
  virtual void FillExpressList();
  /// All known words, the built-in ones among them.
  TExpressList& WordList();

 private:
  struct CompiledExpression {
    std::string lower_text;
    std::vector<TExprRec> chain;  // never resized: records point at each other
  };

  std::vector<TExprRec> Compile(std::string_view lower);
  void Retire(std::unique_ptr<TExprWord> word);

  TExpressList word_list_;
  TOCollection<TExprWord> const_list_;
  std::vector<CompiledExpression> expressions_;
  // Words that left the dictionary while expressions may still refer to them.
  TOCollection<TExprWord> retired_;
  TExprRec* current_rec_ = nullptr;
  std::string current_text_;
  bool filled_ = false;
};

}  // namespace tarnwick
