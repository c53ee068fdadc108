// The conjugate-gradient method with a gradient estimated from the objective. Knows nothing but the objective.
#pragma once

#include <span>

#include "fit/minimise.h"

namespace tarnwick {

/// E. Polak and G. Ribiere, Note sur la convergence de methodes de directions conjuguees, Revue francaise d'informatique et
/// de recherche operationnelle 3 (1969), 35; line search by R. P. Brent (1973). The gradient is a central difference with
/// the step cbrt(2^-52) times the greater of the parameter's absolute values now and at the start (times 1 when both are 0);
/// where one side is undefined, a one-sided difference; where both are, 0. Stops when a line minimisation changes the
/// objective by the fraction `options.tolerance` or less, or the gradient is 0.
MinimiseOutcome MinimiseConjugateGradient(const ScalarObjective& objective,
                                          std::span<const double> start,
                                          const MinimiseOptions& options, Progress& progress);

}  // namespace tarnwick
