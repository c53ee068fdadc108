// What the fit of several DataSets at once means for one of them. Knows results and the parts of a fit; runs nothing.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "analysis/fit_part.h"
#include "fit/fit_result.h"

namespace tarnwick {

/// Values, errors, correlations and sum of squares of the part's own points and parameters, other figures of the whole. Number of
/// points, pattern and verdict are left to the caller. Throws EIntegerDivision.
FitResult ShareOf(FitPart& part, const FitResult& whole);

/// Values and errors of the part's tied parameters; errors undefined where the data do not determine all that is varied.
std::vector<TiedParameter> TiesOf(const FitPart& part, const FitResult& result);

/// Throws Error where a parameter to share is missing, tied or held fixed in some job.
void CheckShared(std::span<const FitJob> jobs, std::span<const std::string> shared);

}  // namespace tarnwick
