// Other starting values for a fit that ended in a minimum which may not be the lowest: places, widths and rates that the
// range of X suggests, and powers of ten. Knows residuals; judges nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/progress.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

struct WideSearchResult {
  std::optional<std::vector<double>> p;  ///< nothing when nothing lower than `found` was met
  std::int64_t evaluations = 0;          ///< passes with derivatives over some points
};

/// Starts that lead lower than `found`, which was reached from `start`; the best of them, near its minimum. A bounded effort
/// over a thousand points at most, the same in every run. Throws EIntegerDivision.
WideSearchResult SearchWidely(const LeastSquaresProblem& residuals, std::span<const double> start,
                              std::span<const double> found, Progress& progress);

}  // namespace tarnwick
