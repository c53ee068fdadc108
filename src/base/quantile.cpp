#include "base/quantile.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

double ValueAtRank(std::span<double> values, std::size_t rank) {
  const auto at = values.begin() + static_cast<std::ptrdiff_t>(rank);
  std::nth_element(values.begin(), at, values.end());
  return *at;
}

double QuantileOf(std::span<double> values, double p) {
  const double position = p * static_cast<double>(values.size() - 1);
  const auto below = static_cast<std::size_t>(position);
  const double least = ValueAtRank(values, below);
  if (below + 1 == values.size()) return least;
  const auto above = values.subspan(below + 1);
  const double next = *std::min_element(above.begin(), above.end());
  return std::lerp(least, next, position - static_cast<double>(below));
}

double MedianOf(std::span<double> values) {
  return QuantileOf(values, 0.5);
}

}  // namespace tarnwick
