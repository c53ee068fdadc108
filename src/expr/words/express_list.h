// The dictionary of all words known to one parser, ordered by name without regard to case.
#pragma once

#include <string_view>

#include "expr/words/expr_word.h"
#include "expr/words/sorted_collection.h"

namespace tarnwick {

class TExpressList final : public TSortedCollection<TExprWord, std::string_view> {
 public:
  TExpressList();

  std::string_view KeyOf(const TExprWord& word) const override { return word.Name(); }
  int Compare(std::string_view name1, std::string_view name2) const override;

  /// The word of that name; null when there is none.
  TExprWord* Find(std::string_view name) const;
};

}  // namespace tarnwick
