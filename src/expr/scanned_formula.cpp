#include "expr/scanned_formula.h"

#include "base/text_encoding.h"
#include "expr/expr_scanner.h"
#include "expr/words/added_words.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {

ScannedFormula::ScannedFormula(std::string_view formula) {
  InsertFormulaWords(words_);
  try {
    ScanExpression(LowerAscii(formula), formula, words_, {constants_, displaced_}, tokens_);
  } catch (const EParserException&) {  // whoever compiles the formula tells what it is
    is_whole_ = false;
  }
}

}  // namespace tarnwick
