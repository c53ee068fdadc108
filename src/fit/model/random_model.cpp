#include "fit/model/random_model.h"

#include "expr/words/evaluation_procedures.h"
#include "expr/words/expr_rec.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

std::string RandomTrouble(const TCurFit& model) {
  for (const TExprRec* record = model.CurrentRec(); record != nullptr; record = record->Next) {
    if (record->Oper == &NextRandom)
      return "The model uses random: another curve each time it is computed cannot be fitted.";
  }
  return {};
}

}  // namespace tarnwick
