#include "expr/words/expr_word.h"

#include <optional>
#include <random>

#include "base/number_text.h"
#include "base/split_mix.h"
#include "base/text_encoding.h"
#include "expr/words/evaluation_procedures.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

double NumberIn(std::string_view text) {
  if (text.empty()) return kUndefined;
  const std::optional<double> value = ParseNumber(text);
  if (!value) throw EParserException("\"" + std::string(text) + "\" is not a number");
  return *value;
}

std::string_view WithoutQuotes(std::string_view text) {
  if (!text.starts_with('\'') || !text.ends_with('\'')) return text;
  return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

}  // namespace

TExprWord::TExprWord(std::string_view name, ExprFunc func) : name_(LowerAscii(name)), func_(func) {}

TDoubleConstant::TDoubleConstant(std::string_view name, double value)
    : TExprWord(name, &LoadOperand), value_(value) {}

TDoubleConstant::TDoubleConstant(std::string_view name, std::string_view value_text)
    : TDoubleConstant(name, NumberIn(value_text)) {}

TDoubleVariable::TDoubleVariable(std::string_view name, double* value_ptr)
    : TExprWord(name, &LoadOperand), value_ptr_(value_ptr) {}

TStringConstant::TStringConstant(std::string_view text)
    : TExprWord(text, &LoadOperand), text_(WithoutQuotes(text)) {}

TFunction::TFunction(std::string_view name, int priority, Notation notation, int n_args,
                     ExprFunc func)
    : TExprWord(name, func), notation_(notation), priority_(priority), n_args_(n_args) {
  if (n_args > kMaxArgs) throw EParserException("Too many arguments");
}

TRandomFunction::TRandomFunction(std::string_view name)
    : TFunction(name, 0, Notation::Function, 0, &NextRandom) {}

double TRandomFunction::Next() {
  if (!seeded_) {
    std::random_device device;
    state_ = (std::uint64_t{device()} << 32) | device();
    seeded_ = true;
  }
  return NextSplitMix(state_);
}

TLogicalStringOper::TLogicalStringOper(std::string_view oper, const TExprWord& left,
                                       const TExprWord& right)
    : TExprWord(oper, &CompareStrings),
      comparison_(ComparisonNamed(oper)),
      left_(left),
      right_(right) {}

TLogicalStringOper::Comparison TLogicalStringOper::ComparisonNamed(std::string_view oper) {
  if (oper == "=") return Comparison::Equal;
  if (oper == ">") return Comparison::Greater;
  if (oper == "<") return Comparison::Less;
  if (oper == ">=") return Comparison::GreaterOrEqual;
  if (oper == "<=") return Comparison::LessOrEqual;
  throw EParserException(std::string(oper) + " is not a valid string operand");
}

bool TLogicalStringOper::Holds() const {
  const int order = left_.AsString().compare(right_.AsString());
  switch (comparison_) {
    case Comparison::Equal:
      return order == 0;
    case Comparison::Greater:
      return order > 0;
    case Comparison::Less:
      return order < 0;
    case Comparison::GreaterOrEqual:
      return order >= 0;
    case Comparison::LessOrEqual:
      return order <= 0;
  }
  return false;
}

}  // namespace tarnwick
