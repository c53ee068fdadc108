// What a constant leaves of numbers. Knows numbers only.
#pragma once

#include <span>

namespace tarnwick {

/// Sum of ((y - m) w)^2 about the mean m that the squares of the weights w make; w is 1 where there are none. Two passes.
double SumAboutMean(std::span<const double> y, std::span<const double> weights = {});

}  // namespace tarnwick
