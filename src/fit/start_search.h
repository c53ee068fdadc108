// A better start for a fit that went astray: where the data do not hold the parameters, the starting values were often off by
// powers of ten. Knows residuals; runs no minimiser.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/progress.h"
#include "fit/model_residuals.h"

namespace tarnwick {

/// True where the columns of R, each scaled to length 1, are nearly dependent: some parameters can run away together.
bool IsNearlySingular(const ReducedJacobian& reduced);

struct FoundStart {
  std::vector<double> p;         ///< all varied parameters
  double sum_of_squares = 0;     ///< that the linearised problem promises there
  std::int64_t evaluations = 0;  ///< passes with derivatives that it took
};

/// Tries powers of ten of one parameter after the other, in two rounds, with the linear parameters at their best for each
/// (variable projection: Golub & Pereyra 1973). Answers `start` when nothing is better. Throws EIntegerDivision.
FoundStart SearchStart(ModelResiduals& residuals, std::span<const double> start,
                       Progress& progress);

}  // namespace tarnwick
