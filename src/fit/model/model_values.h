// A model's values at many X, by blocks where its expression lends itself to them. Knows no points and no fit.
#pragma once

#include <span>
#include <vector>

#include "fit/model/curve_fit.h"

namespace tarnwick {

/// At the present values of the parameters; `model` must be prepared. Throws EIntegerDivision.
std::vector<double> ModelValues(TCurFit& model, std::span<const double> x);

}  // namespace tarnwick
