// The methods that minimise a scalar objective, one row each: a new one is a file of its own and a row here. The Newton-type
// method works on residuals and is no row. Knows no model.
#pragma once

#include <span>
#include <string_view>

#include "fit/minimise.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

struct MinimiseMethod {
  FitProcType type;
  std::string_view name;  ///< for people, in the middle of a sentence
  MinimiseOutcome (*minimise)(const ScalarObjective&, std::span<const double> start,
                              const MinimiseOptions&, Progress&);
};

std::span<const MinimiseMethod> ScalarMinimiseMethods();

/// The row of `type`; null for a method that does not work on a scalar objective.
const MinimiseMethod* FindScalarMinimiseMethod(FitProcType type);

}  // namespace tarnwick
