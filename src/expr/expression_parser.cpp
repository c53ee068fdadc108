#include "expr/expression_parser.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

#include "base/text_encoding.h"
#include "base/undefined.h"
#include "expr/expr_scanner.h"
#include "expr/expression_hints.h"
#include "expr/expression_tree.h"
#include "expr/words/builtin_words.h"
#include "expr/words/evaluation_procedures.h"
#include "expr/words/expr_collection.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr std::size_t kConstCapacity = 10;

bool IsBoundVariable(const TExprWord& word) {
  return typeid(word) == typeid(TDoubleVariable);
}

/// The words of `list` whose class is exactly Word, in its order.
template <class Word>
std::vector<std::reference_wrapper<const Word>> WordsOf(const TExpressList& list) {
  std::vector<std::reference_wrapper<const Word>> words;
  for (const TExprWord* const word : list) {
    if (typeid(*word) == typeid(Word)) words.emplace_back(static_cast<const Word&>(*word));
  }
  return words;
}

}  // namespace

TExpressionParser::TExpressionParser() : const_list_(kConstCapacity) {}

TExpressionParser::~TExpressionParser() = default;

void TExpressionParser::FillExpressList() {
  for (const BuiltinWord& word : BuiltinWords()) word_list_.Insert(MakeWord(word));
}

TExpressList& TExpressionParser::WordList() {
  // Not in the constructor: a derived class's FillExpressList could not be called there.
  if (!filled_) {
    filled_ = true;
    FillExpressList();
  }
  return word_list_;
}

int TExpressionParser::CompileExpression(std::string_view text) {
  if (text.empty()) return -1;
  if (text.size() > kLongestExpression) {
    throw EParserException("The expression is longer than " + std::to_string(kLongestExpression) +
                           " characters");
  }
  current_text_ = text;
  const std::string lower = LowerAscii(text);
  const auto known =
      std::find_if(expressions_.begin(), expressions_.end(),
                   [&lower](const CompiledExpression& one) { return one.lower_text == lower; });
  if (known != expressions_.end()) {
    current_rec_ = known->chain.data();
    return static_cast<int>(known - expressions_.begin());
  }
  std::vector<TExprRec> chain = Compile(lower);
  expressions_.push_back({lower, std::move(chain)});
  current_rec_ = expressions_.back().chain.data();
  return static_cast<int>(expressions_.size()) - 1;
}

std::vector<TExprRec> TExpressionParser::Compile(std::string_view lower) {
  TOCollection<TExprWord> constants;
  TExprCollection tokens;
  try {
    ScanExpression(lower, current_text_, WordList(), {constants, retired_}, tokens);
    tokens.CheckBrackets();
    tokens.ResolveSigns(WordList());
    tokens.JoinStringComparisons(constants);
    std::vector<TExprRec> chain = ExpressionTree(tokens, current_text_).MakeLinkedList();
    constants.MoveTo(const_list_);
    return chain;
  } catch (const EParserException& error) {
    const ExpressionHint hint = HintFor(tokens, WordList(), current_text_);
    throw EParserException(error.what(), error.Place(), hint.text, hint.place);
  }
}

double TExpressionParser::Evaluate() {
  TExprRec* rec = current_rec_;
  if (rec == nullptr) return kUndefined;
  for (;; rec = rec->Next) {
    rec->Oper(*rec);
    if (rec->Next == nullptr) return rec->Res;
  }
}

void TExpressionParser::DefineVariable(std::string_view name, double* address) {
  Retire(WordList().Replace(std::make_unique<TDoubleVariable>(name, address)));
}

bool TExpressionParser::RemoveVariable(std::string_view name) {
  const SearchResult place = WordList().Search(name);
  if (!place.found || !IsBoundVariable(word_list_[place.index])) return false;
  Retire(word_list_.Detach(place.index));
  return true;
}

void TExpressionParser::RemoveAllVariables() {
  for (std::size_t i = WordList().Count(); i-- > 0;) {
    if (IsBoundVariable(word_list_[i])) Retire(word_list_.Detach(i));
  }
}

/// Keeps a word for the expressions that may still refer to it.
void TExpressionParser::Retire(std::unique_ptr<TExprWord> word) {
  if (word && !expressions_.empty()) retired_.Add(std::move(word));
}

void TExpressionParser::GetVariables(
    std::vector<std::reference_wrapper<const TDoubleVariable>>& list) {
  list = WordsOf<TDoubleVariable>(WordList());
}

std::vector<std::reference_wrapper<const TGeneratedVariable>>
TExpressionParser::GeneratedVariables() {
  return WordsOf<TGeneratedVariable>(WordList());
}

std::vector<std::string> TExpressionParser::UnassignedNames() {
  std::vector<const double*> assigned;
  for (const CompiledExpression& expression : expressions_) {
    for (const TExprRec& rec : expression.chain) {
      if (rec.Oper == &Assign) assigned.push_back(rec.Args[0]);
    }
  }
  std::vector<std::string> names;
  for (TExprWord* const word : WordList()) {
    if (typeid(*word) != typeid(TGeneratedVariable)) continue;
    const bool known =
        std::find(assigned.begin(), assigned.end(), word->AsPointer()) != assigned.end();
    if (!known) names.push_back(word->Name());
  }
  return names;
}

void TExpressionParser::ClearExpressions() {
  current_rec_ = nullptr;
  expressions_.clear();
  // Only expressions refer to these.
  const_list_.Clear();
  retired_.Clear();
}

std::vector<const double*> TExpressionParser::ConstantAddresses() const {
  std::vector<const double*> addresses;
  for (TExprWord* const word : const_list_) {
    if (const double* const address = word->AsPointer()) addresses.push_back(address);
  }
  return addresses;
}

}  // namespace tarnwick
