// What likelihoods need beside the sum of squares where weights follow the model's value. Knows numbers only.
#pragma once

#include <span>

namespace tarnwick {

/// 2 sum [y ln(y/f) - (y - f)]: minus twice the log-likelihood of counts y, less that of a model through all of them (McCullagh &
/// Nelder, Generalized Linear Models, 1989, chapter 2.3). Undefined where y < 0 or f <= 0.
double CountDeviance(std::span<const double> y, std::span<const double> f);

/// The sum of ln f^2, of those that are not 0.
double SumOfLogSquares(std::span<const double> f);

}  // namespace tarnwick
