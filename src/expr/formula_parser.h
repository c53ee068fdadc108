// The parser of what fits, columns and the calculator compute: with the added words. Knows dictionaries only.
#pragma once

#include "expr/expression_parser.h"

namespace tarnwick {

class TFormulaParser : public TExpressionParser {
 protected:
  void FillExpressList() override;
};

}  // namespace tarnwick
