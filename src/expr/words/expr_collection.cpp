#include "expr/words/expr_collection.h"

#include <algorithm>
#include <memory>
#include <typeinfo>
#include <utility>

#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

bool IsSign(const TExprWord& word) {
  return word.Name() == "-" || word.Name() == "+";
}
bool IsNot(const TExprWord& word) {
  return word.Name() == "not";
}

/// What stands before a position: nothing, a bracket or an operator leave the next word without a left operand.
bool SignMayFollow(const TExprCollection& tokens) {
  if (tokens.Count() == 0) return true;
  const TExprWord& before = tokens[tokens.Count() - 1];
  return before.ResultType() == WordKind::LeftBracket ||
         (before.IsOperator() && before.NArgs() == 2);
}
bool NotMayFollow(const TExprCollection& tokens) {
  if (tokens.Count() == 0) return true;
  const TExprWord& before = tokens[tokens.Count() - 1];
  return before.ResultType() == WordKind::LeftBracket || before.IsOperator();
}

bool IsWholeNumber(const TExprWord& word) {
  return typeid(word) == typeid(TDoubleConstant) && word.Name().find('.') == std::string::npos;
}

TExprWord& Known(const TExpressList& words, std::string_view name, std::size_t place) {
  TExprWord* const word = words.Find(name);
  if (word == nullptr) throw EParserException("Can not find operand/function", place);
  return *word;
}

}  // namespace

void TExprCollection::Add(TExprWord& word, std::size_t place) {
  TNoOwnerCollection::Add(word);
  places_.push_back(place);
}

void TExprCollection::Swap(TExprCollection& other) {
  items_.swap(other.items_);
  places_.swap(other.places_);
}

void TExprCollection::CheckBrackets() const {
  std::size_t opened = 0;
  std::size_t closed = 0;
  std::size_t last = 0;
  for (std::size_t i = 0; i < Count(); ++i) {
    const WordKind kind = items_[i]->ResultType();
    opened += kind == WordKind::LeftBracket;
    closed += kind == WordKind::RightBracket;
    if (kind == WordKind::LeftBracket || kind == WordKind::RightBracket) last = i;
  }
  if (opened == closed) return;
  // A "(" that is never closed is named, else the ")" that came last.
  const std::vector<std::size_t> matching = MatchingBrackets();
  for (std::size_t i = 0; i < Count() && opened > closed; ++i) {
    if (items_[i]->ResultType() == WordKind::LeftBracket && matching[i] == Count()) {
      last = i;
      break;
    }
  }
  throw EParserException("Unequal brackets", places_[last]);
}

std::vector<std::size_t> TExprCollection::MatchingBrackets() const {
  std::vector<std::size_t> matching(Count(), Count());
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < Count(); ++i) {
    const WordKind kind = items_[i]->ResultType();
    if (kind == WordKind::LeftBracket) {
      open.push_back(i);
    } else if (kind == WordKind::RightBracket && !open.empty()) {
      matching[open.back()] = i;
      open.pop_back();
    }
  }
  return matching;
}

/// Appends what a run of signs or of "not" beginning at `from` comes to, and answers where the run ends.
std::size_t TExprCollection::CopySignRun(std::size_t from, const TExpressList& words,
                                         TExprCollection& result) {
  std::size_t to = from;
  bool odd = false;
  if (IsSign(*items_[from])) {
    for (; to < Count() && IsSign(*items_[to]); ++to) odd ^= items_[to]->Name() == "-";
    result.Add(Known(words, odd ? "-@" : "+@", places_[from]), places_[from]);
  } else {
    for (; to < Count() && IsNot(*items_[to]); ++to) odd = !odd;
    if (odd) result.Add(*items_[from], places_[from]);
  }
  return to;
}

void TExprCollection::ResolveSigns(const TExpressList& words) {
  TExprCollection result(Count());
  for (std::size_t i = 0; i < Count();) {
    TExprWord& word = *items_[i];
    if ((IsSign(word) && SignMayFollow(result)) || (IsNot(word) && NotMayFollow(result))) {
      i = CopySignRun(i, words, result);
      continue;
    }
    const bool whole_power = word.Name() == "^" && i + 1 < Count() && IsWholeNumber(*items_[i + 1]);
    result.Add(whole_power ? Known(words, "^@", places_[i]) : word, places_[i]);
    ++i;
  }
  Swap(result);
}

void TExprCollection::JoinStringComparisons(TOCollection<TExprWord>& constants) {
  const auto is_string = [](const TExprWord& word) {
    return word.ResultType() == WordKind::String;
  };
  if (std::none_of(begin(), end(), [&](const TExprWord* word) { return is_string(*word); })) return;
  // Built from the last token to the first.
  TExprCollection result(Count());
  for (std::size_t i = Count(); i-- > 0;) {
    const std::size_t n = result.Count();
    if (n < 2 || !is_string(*items_[i]) || !is_string(result[n - 2])) {
      result.Add(*items_[i], places_[i]);
      continue;
    }
    std::unique_ptr<TLogicalStringOper> comparison;
    try {
      comparison =
          std::make_unique<TLogicalStringOper>(result[n - 1].Name(), *items_[i], result[n - 2]);
    } catch (const EParserException& error) {
      throw EParserException(error.what(), result.PlaceOf(n - 1));
    }
    result.items_.resize(n - 2);
    result.places_.resize(n - 2);
    result.Add(*comparison, places_[i]);
    constants.Add(std::move(comparison));
  }
  std::reverse(result.items_.begin(), result.items_.end());
  std::reverse(result.places_.begin(), result.places_.end());
  Swap(result);
}

}  // namespace tarnwick
