// The downhill simplex method, with the first simplex as small as the tolerance. Knows nothing but the objective.
#pragma once

#include <span>

#include "fit/minimise.h"

namespace tarnwick {

/// J. A. Nelder and R. Mead, A simplex method for function minimization, Computer Journal 7 (1965), 308. Vertex k of the first
/// simplex is the start with coordinate k increased by `options.tolerance`; the simplex grows by its expansions. Stops when
/// the best and the worst vertex differ by less than the fraction `options.tolerance`, or after
/// `options.max_iterations` evaluations per parameter.
///
/// Beyond the published method the outcome is NoFurtherDescent, with the reason in its stop_test, when the test holds before
/// the first step, when no vertex differs from the start in some coordinate (the tolerance is lost in a great value) and
/// when the simplex can shrink no more.
MinimiseOutcome MinimiseSimplex(const ScalarObjective& objective, std::span<const double> start,
                                const MinimiseOptions& options, Progress& progress);

/// The simplex first, then Powell's method from its result: the way out of a start where one of them stands still. Iterations
/// and evaluations are those of both; the tests of both are in stop_test. A cancelled simplex is not followed.
MinimiseOutcome MinimiseSimplexPowell(const ScalarObjective& objective,
                                      std::span<const double> start, const MinimiseOptions& options,
                                      Progress& progress);

}  // namespace tarnwick
