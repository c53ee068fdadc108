#include "analysis/outliers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/smoothing.h"
#include "base/quantile.h"

namespace tarnwick {
std::vector<Expected> HampelOutliers(std::span<const double> y, int window, double times,
                                     const CancelPoint& cancel) {
  CheckWindow(window, y.size());
  const std::size_t half = static_cast<std::size_t>(window) / 2;
  std::vector<Expected> expected;
  expected.reserve(y.size());
  std::vector<double> near;
  constexpr std::size_t kBetweenCancels = 1024;
  for (std::size_t i = 0; i < y.size(); ++i) {
    if (i % kBetweenCancels == 0) cancel.Pass();
    const std::size_t begin = i - std::min(i, half);
    const std::size_t end = std::min(i + half + 1, y.size());
    near.assign(y.begin() + static_cast<std::ptrdiff_t>(begin),
                y.begin() + static_cast<std::ptrdiff_t>(end));
    const double median = MedianOf(near);
    for (double& value : near) value = std::abs(value - median);
    const double deviation = MedianOf(near) / kMedianOfNormal;
    expected.push_back({median, std::abs(y[i] - median) > times * deviation});
  }
  return expected;
}

std::vector<Expected> TukeyOutliers(std::span<const double> y, double times) {
  std::vector<double> values(y.begin(), y.end());
  const double lower = QuantileOf(values, 0.25);
  const double upper = QuantileOf(values, 0.75);
  const double reach = times * (upper - lower);
  std::vector<Expected> expected;
  expected.reserve(y.size());
  for (const double value : y) {
    const double bound = std::clamp(value, lower - reach, upper + reach);
    expected.push_back({bound, bound != value});
  }
  return expected;
}

}  // namespace tarnwick
