// Splits the text of an expression into words. Knows characters and the dictionary; nothing of what words mean together.
#pragma once

#include <string_view>

#include "expr/words/expr_collection.h"
#include "expr/words/expr_word.h"
#include "expr/words/express_list.h"
#include "expr/words/o_collection.h"

namespace tarnwick {

/// Appends the words of `text`, which is in lower case, to `tokens`. Numbers and strings are owned by `constants`; a name or
/// sign that `words` does not know becomes a generated variable there. Throws EParserException "Syntax error in
/// expression " and `shown_text` at a number that cannot be read.
void ScanExpression(std::string_view text, std::string_view shown_text, TExpressList& words,
                    TOCollection<TExprWord>& constants, TExprCollection& tokens);

}  // namespace tarnwick
