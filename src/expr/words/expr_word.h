// The words of an expression: operands, functions, brackets, string comparisons. A word knows its name, its evaluation
// procedure and its value's storage; it knows no expression that it stands in.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/undefined.h"
#include "expr/words/expr_rec.h"

namespace tarnwick {

/// What a word stands for among its neighbours.
enum class WordKind : std::uint8_t { Number, TruthValue, String, LeftBracket, RightBracket, Comma };

class TExprWord {
 public:
  /// The name is stored lower-cased. `func` may be null for words that are never evaluated.
  TExprWord(std::string_view name, ExprFunc func);
  virtual ~TExprWord() = default;
  TExprWord(const TExprWord&) = delete;
  TExprWord& operator=(const TExprWord&) = delete;

  /// True when the word is written between or beside its operands rather than as name(args).
  virtual bool IsOperator() const { return false; }
  virtual std::string_view AsString() const { return {}; }
  virtual WordKind ResultType() const { return WordKind::Number; }
  virtual int NArgs() const { return 0; }
  /// The address of the double that holds the word's value; null when it has none.
  virtual double* AsPointer() { return nullptr; }
  /// Lower numbers bind tighter; functions have 0.
  virtual int Priority() const { return 0; }

  const std::string& Name() const { return name_; }
  ExprFunc Func() const { return func_; }

 private:
  std::string name_;
  ExprFunc func_;
};

/// A number written in an expression.
class TDoubleConstant : public TExprWord {
 public:
  TDoubleConstant(std::string_view name, double value);
  /// An empty `value_text` stands for the undefined value. Throws EParserException when it is no number.
  TDoubleConstant(std::string_view name, std::string_view value_text);

  double* AsPointer() override { return &value_; }
  double Value() const { return value_; }

 private:
  double value_;
};

/// A name that nobody defined: undefined until an expression assigns it.
class TGeneratedVariable final : public TDoubleConstant {
 public:
  explicit TGeneratedVariable(std::string_view name) : TDoubleConstant(name, kUndefined) {}

  std::string_view AsString() const override { return string_value_; }
  WordKind ResultType() const override { return var_type_; }
  void SetStringValue(std::string_view text) { string_value_ = text; }
  void SetVarType(WordKind type) { var_type_ = type; }

 private:
  std::string string_value_;
  WordKind var_type_ = WordKind::Number;
};

/// A name bound to the caller's own double, which must outlive every evaluation.
class TDoubleVariable final : public TExprWord {
 public:
  TDoubleVariable(std::string_view name, double* value_ptr);
  double* AsPointer() override { return value_ptr_; }
  const double* ValuePtr() const { return value_ptr_; }

 private:
  double* value_ptr_;
};

/// A text in single quotes; the name keeps the quotes.
class TStringConstant final : public TExprWord {
 public:
  explicit TStringConstant(std::string_view text);
  std::string_view AsString() const override { return text_; }
  WordKind ResultType() const override { return WordKind::String; }

 private:
  std::string text_;
};

class TLeftBracket final : public TExprWord {
 public:
  TLeftBracket() : TExprWord("(", nullptr) {}
  WordKind ResultType() const override { return WordKind::LeftBracket; }
};

class TRightBracket final : public TExprWord {
 public:
  TRightBracket() : TExprWord(")", nullptr) {}
  WordKind ResultType() const override { return WordKind::RightBracket; }
};

class TComma final : public TExprWord {
 public:
  TComma() : TExprWord(",", nullptr) {}
  WordKind ResultType() const override { return WordKind::Comma; }
};

/// How a TFunction is written.
enum class Notation : std::uint8_t { Function, Operator };

class TFunction : public TExprWord {
 public:
  /// Throws EParserException "Too many arguments" when `n_args` exceeds kMaxArgs.
  TFunction(std::string_view name, int priority, Notation notation, int n_args, ExprFunc func);

  bool IsOperator() const override { return notation_ == Notation::Operator; }
  int NArgs() const override { return n_args_; }
  int Priority() const override { return priority_; }

 private:
  Notation notation_;
  int priority_;
  int n_args_;
};

/// A TFunction whose result is a truth value.
class TBooleanFunction final : public TFunction {
 public:
  using TFunction::TFunction;
  WordKind ResultType() const override { return WordKind::TruthValue; }
};

/// A TFunction beyond the built-in table. Its name without a bracket behind it is that of a variable.
class TAddedFunction final : public TFunction {
 public:
  using TFunction::TFunction;
};

/// A function without arguments that gives another uniform number in [0, 1) each time. Each has a sequence of its own,
/// begun at a place that differs from run to run.
class TRandomFunction final : public TFunction {
 public:
  explicit TRandomFunction(std::string_view name);
  double Next();

 private:
  std::uint64_t state_ = 0;
  bool seeded_ = false;
};

/// Two strings compared by character codes. Owns neither; they must outlive it.
class TLogicalStringOper final : public TExprWord {
 public:
  /// Throws EParserException when `oper` is none of "=", ">", "<", ">=", "<=".
  TLogicalStringOper(std::string_view oper, const TExprWord& left, const TExprWord& right);

  WordKind ResultType() const override { return WordKind::TruthValue; }
  bool Holds() const;

 private:
  enum class Comparison : std::uint8_t { Equal, Greater, Less, GreaterOrEqual, LessOrEqual };
  static Comparison ComparisonNamed(std::string_view oper);

  Comparison comparison_;
  const TExprWord& left_;
  const TExprWord& right_;
};

}  // namespace tarnwick
