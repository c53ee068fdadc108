// A fit by the Newton-type method that does not take the next minimum for the best one: where the residuals look as if the
// model could do better, it looks for other starting values. Knows residuals; words nothing.
#pragma once

#include <span>

#include "base/progress.h"
#include "fit/minimise/minimise_newton.h"

namespace tarnwick {

/// As MinimiseNewton; where that loses its way, or its residuals are suspicious, once more from the best start of a wide
/// search, and the lower minimum counts. Both runs together keep to options.max_iterations; the search does no iteration of
/// theirs. What did not lead to the values answered is told as search_evaluations. Throws EIntegerDivision.
NewtonOutcome FitByNewton(LeastSquaresProblem& residuals, std::span<const double> start,
                          const MinimiseOptions& options, Progress& progress);

}  // namespace tarnwick
