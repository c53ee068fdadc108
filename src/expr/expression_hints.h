// What may help whoever wrote an expression: the word that was meant, the bracket that is missing. Knows tokens and texts;
// compiles nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "expr/words/expr_collection.h"
#include "expr/words/express_list.h"

namespace tarnwick {

struct ExpressionHint {
  std::string text;  ///< empty when there is nothing to say
  std::optional<std::size_t>
      place;  ///< the byte of the expression that it is about, where the error's is another
};

/// What is probably wrong with a text that does not compile: `"exq" is no function; did you mean "exp"?`. Nothing for texts
/// longer than anybody writes. `tokens` are those of `text`, as far as it was understood.
ExpressionHint HintFor(const TExprCollection& tokens, const TExpressList& words,
                       std::string_view text);

/// What an expression may mean otherwise than it looks, a text for each: a sign before a power, which it binds tighter than
/// (-u^2 is (-u)^2), with the text that was probably meant, where it makes a difference; names that differ by capitals only
/// and so are one; an equation ("y=a*x+b") instead of its right side. Empty for a text that does not compile.
std::vector<std::string> ExpressionWarnings(std::string_view expression);

}  // namespace tarnwick
