// Values by their rank. Mathematics over spans of finite values, at least one, that are put into another order; O(n).
#pragma once

#include <cstddef>
#include <span>

namespace tarnwick {

/// The median of a normal deviate's size, in standard deviations.
inline constexpr double kMedianOfNormal = 0.6744897501960817;

/// The value that stands at `rank`, from 0, in ascending order.
double ValueAtRank(std::span<double> values, std::size_t rank);

/// The value below which the share `p` (0 to 1) of the values lies, linear between neighbours: position 1 + (n - 1) p in
/// ascending order.
double QuantileOf(std::span<double> values, double p);

double MedianOf(std::span<double> values);

}  // namespace tarnwick
