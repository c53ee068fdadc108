// Weighted sums of neighbouring values, in the best instruction set that this processor has. Knows arrays.
#pragma once

#include <span>

namespace tarnwick {

/// sums[i] = weights[0] values[i] + weights[1] values[i + 1] + ...; there are enough values. Nothing overlaps.
void Convolve(std::span<const double> values, std::span<const double> weights,
              std::span<double> sums);

}  // namespace tarnwick
