#include "expr/expr_scanner.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <typeinfo>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

bool BeginsName(char c) {
  return (c >= 'a' && c <= 'z') || c == '_';
}

/// Walks over a text; past its end stands the character 0, which belongs to no token.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  bool AtEnd() const { return at_ >= text_.size(); }
  char Here() const { return AtEnd() ? '\0' : text_[at_]; }
  std::size_t Place() const { return at_; }

  void SkipBlanks() {
    while (Here() == ' ') ++at_;
  }

  /// The token that begins here.
  std::string_view Take() {
    const std::size_t from = at_;
    const char c = Here();
    if (IsDigit(c) || c == '.') {
      PassNumber();
    } else if (c == '\'') {
      at_ = std::min(text_.find('\'', at_ + 1), text_.size() - 1) + 1;
    } else if (BeginsName(c)) {
      while (BeginsName(Here()) || IsDigit(Here())) ++at_;
    } else {
      PassSign();
    }
    return text_.substr(from, at_ - from);
  }

 private:
  void PassDigits() {
    while (IsDigit(Here())) ++at_;
  }

  void PassNumber() {
    PassDigits();
    if (Here() == '.') {
      ++at_;
      PassDigits();
    }
    if (Here() != 'e') return;
    ++at_;
    if (Here() == '+' || Here() == '-') ++at_;
    PassDigits();
  }

  void PassSign() {
    const char first = Here();
    ++at_;
    const char second = Here();
    const bool pair = (first == ':' && second == '=') ||
                      ((first == '<' || first == '>') && (second == '=' || second == '>'));
    if (pair) ++at_;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

TExprWord& KnownOrGenerated(std::string_view name, bool before_bracket, TExpressList& words,
                            TOCollection<TExprWord>& displaced) {
  TExprWord* const known = words.Find(name);
  if (known != nullptr && (before_bracket || typeid(*known) != typeid(TAddedFunction)))
    return *known;
  auto variable = std::make_unique<TGeneratedVariable>(name);
  TExprWord& word = *variable;
  if (std::unique_ptr<TExprWord> former = words.Replace(std::move(variable)))
    displaced.Add(std::move(former));
  return word;
}

TExprWord& NewConstant(std::unique_ptr<TExprWord> constant, TOCollection<TExprWord>& constants) {
  TExprWord& word = *constant;
  constants.Add(std::move(constant));
  return word;
}

}  // namespace

void ScanExpression(std::string_view text, std::string_view shown_text, TExpressList& words,
                    const ScanOwners& owners, TExprCollection& tokens) {
  // A string that is never closed ends with the text, whose outer blanks count for nothing.
  Scanner scanner(text.substr(0, text.find_last_not_of(' ') + 1));
  while (true) {
    scanner.SkipBlanks();
    if (scanner.AtEnd()) return;
    const std::size_t place = scanner.Place();
    const char first = scanner.Here();
    const std::string_view token = scanner.Take();
    if (first == '\'') {
      tokens.Add(NewConstant(std::make_unique<TStringConstant>(token), owners.constants), place);
    } else if (IsDigit(first) || first == '.') {
      const std::optional<double> value = ParseNumber(token);
      if (!value)
        throw EParserException("Syntax error in expression " + std::string(shown_text), place);
      tokens.Add(NewConstant(std::make_unique<TDoubleConstant>(token, *value), owners.constants),
                 place);
    } else {
      scanner.SkipBlanks();
      tokens.Add(KnownOrGenerated(token, scanner.Here() == '(', words, owners.displaced), place);
    }
  }
}

}  // namespace tarnwick
