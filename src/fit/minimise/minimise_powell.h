// Powell's direction-set method: no derivatives, line after line. Knows nothing but the objective.
#pragma once

#include <span>

#include "fit/minimise.h"

namespace tarnwick {

/// M. J. D. Powell, An efficient method for finding the minimum of a function of several variables without calculating
/// derivatives, Computer Journal 7 (1964), 155; the line search is R. P. Brent's (1973). The first directions are the axes, a
/// tenth of the parameter's size at the start long (1 for a zero). After each iteration the direction of the greatest
/// decrease gives way to the way travelled, where Powell's rule says that the directions stay independent. Stops when
/// an iteration changes the objective by the fraction `options.tolerance` or less.
MinimiseOutcome MinimisePowell(const ScalarObjective& objective, std::span<const double> start,
                               const MinimiseOptions& options, Progress& progress);

}  // namespace tarnwick
