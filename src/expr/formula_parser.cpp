#include "expr/formula_parser.h"

#include "expr/words/added_words.h"

namespace tarnwick {

void TFormulaParser::FillExpressList() {
  TExpressionParser::FillExpressList();
  for (const BuiltinWord& word : AddedWords()) WordList().Insert(MakeWord(word));
}

}  // namespace tarnwick
