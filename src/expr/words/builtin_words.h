// The built-in words, one row each. Knows how a word is written and what it does; nothing of who uses it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "expr/words/expr_word.h"

namespace tarnwick {

/// The class that stands for a built-in word.
enum class WordClass : std::uint8_t {
  LeftBracket,
  RightBracket,
  Comma,
  Function,
  BooleanFunction,
  RandomFunction,
  AddedFunction
};

struct BuiltinWord {
  const char* name;
  WordClass word_class;
  Notation notation;
  int priority;  ///< of operators: lower numbers bind tighter
  int n_args;
  ExprFunc func;
  const char* help;  ///< one line for people; a and b are the arguments

  /// "bracket", "comma", "operator" or "function".
  const char* Kind() const;
};

/// All built-in words in the order in which a parser takes them.
std::span<const BuiltinWord> BuiltinWords();

std::unique_ptr<TExprWord> MakeWord(const BuiltinWord& word);

}  // namespace tarnwick
