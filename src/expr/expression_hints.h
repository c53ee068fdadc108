// What may help whoever wrote an expression: the word that was meant, the bracket that is missing. Knows tokens and texts;
// compiles nothing.
#pragma once

#include <string>
#include <string_view>

#include "expr/words/expr_collection.h"
#include "expr/words/express_list.h"

namespace tarnwick {

/// What is probably wrong with a text that does not compile: `"exq" is no function; did you mean "exp"?`. Empty when there is
/// nothing to say, and for texts longer than anybody writes. `tokens` are those of `text`, as far as it was understood.
std::string HintFor(const TExprCollection& tokens, const TExpressList& words,
                    std::string_view text);

/// A sentence with the text that was probably meant where a sign stands before a power, which it binds tighter than: -u^2 is
/// (-u)^2. Empty where the sign makes no difference, and for a text that does not compile.
std::string SignWarning(std::string_view expression);

}  // namespace tarnwick
