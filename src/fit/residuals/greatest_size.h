// The greatest absolute value of many numbers, as fast as memory. Knows numbers only.
#pragma once

#include <span>

namespace tarnwick {

/// 0 of none; NaN counts for nothing.
double GreatestSize(std::span<const double> values);

}  // namespace tarnwick
