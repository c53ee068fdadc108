// What the fit of several DataSets at once means for one of them. Knows results and the parts of a fit; runs nothing.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "analysis/fits/fit_part.h"
#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// Values, errors, correlations and sum of squares of the part's own points and parameters, other figures of the whole. Number of
/// points, pattern and verdict are left to the caller. Throws EIntegerDivision.
FitResult ShareOf(FitPart& part, const FitResult& whole);

/// Values and errors of the part's tied parameters; errors undefined where the data do not determine all that is varied.
std::vector<TiedParameter> TiesOf(const FitPart& part, const FitResult& result);

/// The residuals of all parts, one part behind the other, and their derivatives by all `varied` parameters. About `most` at
/// most. Throws EIntegerDivision.
ResidualSample SampleOfAll(std::span<const std::unique_ptr<FitPart>> parts,
                           std::span<const double> p, std::size_t most);

/// True when all parts have one function, and `part` some parameter in common with another.
bool IsTestedByAll(std::span<const std::unique_ptr<FitPart>> parts, const FitPart& part);

/// Throws Error where a parameter to share is missing, tied or held fixed in some job.
void CheckShared(std::span<const FitJob> jobs, std::span<const std::string> shared);

}  // namespace tarnwick
