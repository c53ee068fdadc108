// Splits the text of an expression into words. Knows characters and the dictionary; nothing of what words mean together.
#pragma once

#include <string_view>

#include "expr/words/expr_collection.h"
#include "expr/words/expr_word.h"
#include "expr/words/express_list.h"
#include "expr/words/o_collection.h"

namespace tarnwick {

/// Who owns what a scan makes.
struct ScanOwners {
  TOCollection<TExprWord>& constants;  ///< numbers and strings
  TOCollection<TExprWord>& displaced;  ///< added functions whose names became variables
};

/// Appends the words of `text`, which is in lower case, to `tokens`. A name or sign that `words` does not know, and that of an
/// added function without a bracket behind it, becomes a generated variable there. Throws EParserException "Syntax error in
/// expression " and `shown_text` at a number that cannot be read.
void ScanExpression(std::string_view text, std::string_view shown_text, TExpressList& words,
                    const ScanOwners& owners, TExprCollection& tokens);

}  // namespace tarnwick
