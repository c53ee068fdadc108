// What may help whoever wrote an expression: the word that was meant, the bracket that is missing. Knows tokens and texts;
// compiles nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "expr/words/expr_collection.h"
#include "expr/words/express_list.h"

namespace tarnwick {

/// What is probably wrong with a text that does not compile: `"exq" is no function; did you mean "exp"?`. Empty when there is
/// nothing to say, and for texts longer than anybody writes. `tokens` are those of `text`, as far as it was understood.
std::string HintFor(const TExprCollection& tokens, const TExpressList& words,
                    std::string_view text);

/// What an expression may mean otherwise than it looks, a text for each: a sign before a power, which it binds tighter than
/// (-u^2 is (-u)^2), with the text that was probably meant, where it makes a difference; names that differ by capitals only
/// and so are one. Empty for a text that does not compile.
std::vector<std::string> ExpressionWarnings(std::string_view expression);

}  // namespace tarnwick
