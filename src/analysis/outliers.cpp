#include "analysis/outliers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/smoothing.h"

namespace tarnwick {
namespace {

/// Standard deviation of normal scatter by its median deviation.
constexpr double kDeviationPerMedian = 1.482602218505602;

double MedianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) return *middle;
  return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

}  // namespace

std::vector<Expected> HampelOutliers(std::span<const double> y, int window, double times) {
  CheckWindow(window, y.size());
  const std::size_t half = static_cast<std::size_t>(window) / 2;
  std::vector<Expected> expected;
  expected.reserve(y.size());
  std::vector<double> near;
  for (std::size_t i = 0; i < y.size(); ++i) {
    const std::size_t begin = i - std::min(i, half);
    const std::size_t end = std::min(i + half + 1, y.size());
    near.assign(y.begin() + static_cast<std::ptrdiff_t>(begin),
                y.begin() + static_cast<std::ptrdiff_t>(end));
    const double median = MedianOf(near);
    for (double& value : near) value = std::abs(value - median);
    const double deviation = kDeviationPerMedian * MedianOf(near);
    expected.push_back({median, std::abs(y[i] - median) > times * deviation});
  }
  return expected;
}

double QuantileOf(std::span<const double> sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (place - std::floor(place)) * (sorted[above] - sorted[below]);
}

std::vector<Expected> TukeyOutliers(std::span<const double> y, double times) {
  std::vector<double> sorted(y.begin(), y.end());
  std::ranges::sort(sorted);
  const double lower = QuantileOf(sorted, 0.25);
  const double upper = QuantileOf(sorted, 0.75);
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
