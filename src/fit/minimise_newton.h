// Minimises a sum of squares by the Levenberg-Marquardt method with a scaled trust region (More, The Levenberg-Marquardt
// algorithm: implementation and theory, 1978) on exact derivatives. Knows residuals by their reductions only.
#pragma once

#include <span>

#include "base/progress.h"
#include "fit/minimise.h"
#include "fit/model_residuals.h"

namespace tarnwick {

struct NewtonOutcome {
  MinimiseOutcome outcome;
  ReducedJacobian reduced;  ///< at the outcome's parameters; empty when nothing was evaluated
};

/// The minimum next to `start`. options.tolerance bounds the relative reduction of the sum of squares that may be left to
/// gain; from there on a few full steps take the parameters to the precision of the sums. Trials count as iterations.
NewtonOutcome MinimiseNewton(ModelResiduals& residuals, std::span<const double> start,
                             const MinimiseOptions& options, Progress& progress);

}  // namespace tarnwick
