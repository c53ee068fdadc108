#include "analysis/correlation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "analysis/fourier.h"

namespace tarnwick {
namespace {

std::vector<double> LessMean(std::span<const double> values) {
  const long double sum = std::accumulate(values.begin(), values.end(), 0.0L);
  const auto mean = static_cast<double>(sum / static_cast<long double>(values.size()));
  std::vector<double> rest(values.begin(), values.end());
  for (double& value : rest) value -= mean;
  return rest;
}

double SumOfSquares(std::span<const double> values) {
  return static_cast<double>(
      std::inner_product(values.begin(), values.end(), values.begin(), 0.0L));
}

}  // namespace

std::vector<double> Correlation(std::span<const double> a, std::span<const double> b,
                                std::size_t most, CorrelationOf of) {
  std::vector<double> left(a.begin(), a.end());
  std::vector<double> right(b.begin(), b.end());
  if (of != CorrelationOf::Sum) {
    left = LessMean(a);
    right = LessMean(b);
  }
  std::vector<double> sums = LaggedProducts(right, left, most + 1);
  std::ranges::reverse(sums);  // from -most to 0
  const std::vector<double> later = LaggedProducts(left, right, most + 1);
  sums.insert(sums.end(), later.begin() + 1, later.end());
  double scale = 1;
  if (of == CorrelationOf::Covariance) scale = static_cast<double>(a.size());
  if (of == CorrelationOf::Coefficient)
    scale = std::sqrt(SumOfSquares(left)) * std::sqrt(SumOfSquares(right));
  for (double& sum : sums) sum /= scale;
  return sums;
}

}  // namespace tarnwick
