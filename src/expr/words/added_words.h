// Words beyond the built-in table, for parsers that compute fits and columns. Knows how a word is written and what it does;
// nothing of who uses it.
#pragma once

#include <span>

#include "expr/words/builtin_words.h"

namespace tarnwick {

/// Functions, each of which gives way to a variable: its name without a bracket behind it is a name like any other.
std::span<const BuiltinWord> AddedWords();

}  // namespace tarnwick
