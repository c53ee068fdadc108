#include "analysis/sample_comparison.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "analysis/histogram.h"
#include "base/quantile.h"
#include "fit/judge/distributions.h"

namespace tarnwick {
namespace {

void CompareMeans(SampleComparison& result) {
  const auto squared_error = [](const SampleFigures& one) {
    return one.deviation * one.deviation / static_cast<double>(one.count);
  };
  const double a = squared_error(result.first);
  const double b = squared_error(result.second);
  result.difference = result.second.mean - result.first.mean;
  result.difference_error = std::sqrt(a + b);
  if (!(result.difference_error > 0)) return;
  result.t = result.difference / result.difference_error;
  const auto freedom = [](const SampleFigures& one) { return static_cast<double>(one.count - 1); };
  result.t_freedom =
      (a + b) * (a + b) / (a * a / freedom(result.first) + b * b / freedom(result.second));
  result.t_probability = FisherProbability(result.t * result.t, 1, result.t_freedom);
}

void CompareVariances(SampleComparison& result) {
  const double ratio = result.second.deviation / result.first.deviation;
  if (!(ratio > 0) || !std::isfinite(ratio)) return;
  result.f = ratio * ratio;
  const auto above = static_cast<double>(result.second.count - 1);
  const auto below = static_cast<double>(result.first.count - 1);
  const double greater = FisherProbability(result.f, above, below);
  const double less = FisherProbability(1 / result.f, below, above);
  result.f_probability = std::min(1.0, 2 * std::min(greater, less));
}

/// The greatest distance of the cumulated shares; both sorted.
double Distance(const std::vector<double>& a, const std::vector<double>& b, bool& ties) {
  double greatest = 0;
  std::size_t i = 0;
  std::size_t k = 0;
  while (i < a.size() && k < b.size()) {
    const double value = std::min(a[i], b[k]);
    ties = ties || a[i] == b[k];
    while (i < a.size() && a[i] == value) ++i;
    while (k < b.size() && b[k] == value) ++k;
    const double apart = static_cast<double>(i) / static_cast<double>(a.size()) -
                         static_cast<double>(k) / static_cast<double>(b.size());
    greatest = std::max(greatest, std::abs(apart));
  }
  return greatest;
}

/// The share of the orders in which m and n values can mix whose distance reaches `distance`.
double ExactProbability(double distance, std::size_t m, std::size_t n) {
  const auto rows = static_cast<double>(m);
  const auto columns = static_cast<double>(n);
  // Distances are multiples of 1 / mn: what lies half of that below is less.
  const double limit = (std::floor(distance * rows * columns + 1e-7) - 0.5) / (rows * columns);
  std::vector<double> within(n + 1, 0);
  within[0] = 1;
  for (std::size_t k = 1; k <= n; ++k)
    within[k] = static_cast<double>(k) / columns > limit ? 0 : within[k - 1];
  for (std::size_t i = 1; i <= m; ++i) {
    const double share = static_cast<double>(i) / rows;
    if (share > limit) within[0] = 0;
    for (std::size_t k = 1; k <= n; ++k) {
      const bool beyond = std::abs(share - static_cast<double>(k) / columns) > limit;
      const double weight = static_cast<double>(i) / static_cast<double>(i + k);
      within[k] = beyond ? 0 : weight * within[k] + (1 - weight) * within[k - 1];
    }
  }
  return std::clamp(1 - within[n], 0.0, 1.0);
}

/// Kolmogorov's limit, 2 sum of (-1)^(k-1) exp(-2 k^2 z^2).
double LimitProbability(double z) {
  if (z < 0.2) return 1;
  double sum = 0;
  for (int k = 1; k <= 50; ++k) sum += (k % 2 == 1 ? 2 : -2) * std::exp(-2.0 * k * k * z * z);
  return std::clamp(sum, 0.0, 1.0);
}

void CompareDistributions(std::span<const double> first, std::span<const double> second,
                          SampleComparison& result) {
  std::vector<double> a = FiniteOf(first);
  std::vector<double> b = FiniteOf(second);
  std::ranges::sort(a);
  std::ranges::sort(b);
  result.distance = Distance(a, b, result.has_ties);
  const auto m = static_cast<double>(a.size());
  const auto n = static_cast<double>(b.size());
  result.distance_probability =
      m * n <= kMostExactPairs ? ExactProbability(result.distance, a.size(), b.size())
                               : LimitProbability(result.distance * std::sqrt(m * n / (m + n)));
}

}  // namespace

MeanAndDeviation MeanAndDeviationOf(std::span<const double> values) {
  MeanAndDeviation made;
  if (values.empty()) return made;
  long double sum = 0;
  for (const double value : values) sum += value;
  const long double mean = sum / static_cast<long double>(values.size());
  made.mean = static_cast<double>(mean);
  if (values.size() < 2) return made;
  long double squares = 0;
  for (const double value : values) squares += (value - mean) * (value - mean);
  const auto freedom = static_cast<long double>(values.size() - 1);
  made.deviation = static_cast<double>(std::sqrt(squares / freedom));
  return made;
}

SampleFigures FiguresOf(std::span<const double> values) {
  std::vector<double> finite = FiniteOf(values);
  SampleFigures figures;
  figures.count = finite.size();
  if (finite.empty()) return figures;
  const MeanAndDeviation scatter = MeanAndDeviationOf(finite);
  figures.mean = scatter.mean;
  figures.deviation = scatter.deviation;
  figures.lower_quartile = QuantileOf(finite, 0.25);
  figures.median = MedianOf(finite);
  figures.upper_quartile = QuantileOf(finite, 0.75);
  const auto [least, greatest] = std::ranges::minmax(finite);
  figures.least = least;
  figures.greatest = greatest;
  return figures;
}

SampleComparison CompareSamples(std::span<const double> first, std::span<const double> second) {
  SampleComparison result{.first = FiguresOf(first), .second = FiguresOf(second)};
  if (result.first.count == 0 || result.second.count == 0) return result;
  CompareDistributions(first, second, result);
  if (result.first.count < 2 || result.second.count < 2) return result;
  CompareMeans(result);
  CompareVariances(result);
  return result;
}

}  // namespace tarnwick
