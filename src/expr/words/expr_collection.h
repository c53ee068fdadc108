// The tokens of one expression while it is compiled: words and the places where they stand. Owns no word.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "expr/words/expr_word.h"
#include "expr/words/express_list.h"
#include "expr/words/o_collection.h"

namespace tarnwick {

class TExprCollection final : public TNoOwnerCollection<TExprWord> {
 public:
  using TNoOwnerCollection::TNoOwnerCollection;

  /// Appends a word that begins at the byte `place` of the expression.
  void Add(TExprWord& word, std::size_t place);
  std::size_t PlaceOf(std::size_t index) const { return places_[index]; }

  /// Throws EParserException unless there are as many "(" as ")".
  void CheckBrackets() const;

  /// Turns each run of signs into one "-@" or "+@", each run of "not" into one or none, and a "^" before a number written
  /// without a point into "^@". The three words are taken from `words`.
  void ResolveSigns(const TExpressList& words);

  /// Turns each comparison of two strings into one word, which `constants` owns. Throws EParserException where strings
  /// are joined by anything else.
  void JoinStringComparisons(TOCollection<TExprWord>& constants);

  /// For each "(" the index of its ")"; Count() for every other word and where there is none.
  std::vector<std::size_t> MatchingBrackets() const;

 private:
  std::size_t CopySignRun(std::size_t from, const TExpressList& words, TExprCollection& result);
  void Swap(TExprCollection& other);

  std::vector<std::size_t> places_;
};

}  // namespace tarnwick
