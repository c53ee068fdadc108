// Words beyond the built-in table, for parsers that compute fits and columns. Knows how a word is written and what it does;
// nothing of who uses it.
#pragma once

#include <span>

#include "expr/words/builtin_words.h"
#include "expr/words/express_list.h"

namespace tarnwick {

/// Functions, each of which gives way to a variable: its name without a bracket behind it is a name like any other.
std::span<const BuiltinWord> AddedWords();

/// Puts all words of formulas, built-in and added, into an empty dictionary.
void InsertFormulaWords(TExpressList& words);

}  // namespace tarnwick
