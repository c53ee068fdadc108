// Sums over all Y of a fit in one pass, as fast as memory. Knows numbers only.
#pragma once

#include <span>

namespace tarnwick {

/// Of weighted Y; weights are 1 where there are none.
struct SumsOfY {
  double squares = 0;  ///< of (y w)^2
  /// What a constant leaves: of ((y - m) w)^2 about the mean m that the squares of the weights make. The pass takes the mean of
  /// a sample off, so that no digits are lost far from zero.
  double about_mean = 0;
};

SumsOfY SumUpY(std::span<const double> y, std::span<const double> weights = {});

}  // namespace tarnwick
