// Which terms of a model the points may do without: a second peak where chance made a bump. Knows a least-squares problem;
// words nothing.
#pragma once

#include <span>
#include <vector>

#include "base/progress.h"
#include "fit/fit_result.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

/// Terms that hang on one parameter: where it is 0, others move nothing (place and width of a peak without height), so that
/// near 0 their errors, which take the curve for straight, mean nothing. The model is fitted without each, and what the term
/// gains is compared with what chance does: with q parameters in the term and n points,
///   n P(F > gain / q / s^2),  F with q and dof degrees of freedom (chi squared for absolute errors),
/// since a term without a place of its own finds the best of about n (R. B. Davies, Biometrika 74 (1987), 33; for peaks it is
/// some n/10 of them, for waves n/2). Absent may be what chance so makes in more than one of 5 fits, unless it is five
/// deviations. A parameter of more than ten of its errors is not asked, nor one whose bounds leave 0 out, nor, unless errors are
/// absolute, any with fewer than 4 degrees of freedom. `values` are those of the minimum, all determined. Throws
/// EIntegerDivision.
std::vector<AbsentTerm> FindAbsentTerms(LeastSquaresProblem& problem,
                                        std::span<const double> values,
                                        const FitStatistics& statistics, Progress& progress);

}  // namespace tarnwick
