#include "data/series/statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarnwick {

namespace {

constexpr const char* kTooFewValues =
    "No Statistics are available unless more than one point exists";
constexpr const char* kNoDeviance =
    "No skew/kurtosis are available because there is no deviance in the data";

// The value at a position counted from 1; there is none at position 0.
std::optional<double> AtPosition(std::span<const double> ascending, std::size_t position) {
  if (position == 0) return std::nullopt;
  return ascending[position - 1];
}

void FindQuantiles(std::span<const double> ascending, StatisticsRecord& record) {
  const std::size_t n = ascending.size();
  const auto lower_and_upper = [&](std::size_t parts, std::optional<double>& lower,
                                   std::optional<double>& upper) {
    lower = AtPosition(ascending, n / parts);
    upper = AtPosition(ascending, n - n / parts);
  };
  lower_and_upper(5, record.lower_quintile, record.upper_quintile);
  lower_and_upper(4, record.lower_quartile, record.upper_quartile);
  record.median = AtPosition(ascending, n / 2);
}

// The first run counts the value it starts with, every later run does not; the earliest of equally long runs stays.
std::optional<double> FindMode(std::span<const double> ascending, double tolerance) {
  std::optional<double> mode;
  double run_start = ascending.front();
  std::size_t run_length = 0;
  std::size_t best_length = 0;
  for (const double value : ascending) {
    // Equal infinities have no difference, yet belong together.
    if (std::abs(value - run_start) <= tolerance || (value == run_start && tolerance >= 0)) {
      if (++run_length > best_length) {
        best_length = run_length;
        mode = value;
      }
    } else {
      run_start = value;
      run_length = 0;
    }
  }
  return mode;
}

// A second pass takes away what the first one rounded: equal values have exactly their value as the mean.
long double MeanOf(std::span<const double> values) {
  const auto n = static_cast<long double>(values.size());
  long double sum = 0;
  for (const double value : values) sum += value;
  const long double mean = sum / n;
  if (!std::isfinite(mean)) return mean;
  long double rest = 0;
  for (const double value : values) rest += value - mean;
  return mean + rest / n;
}

// Sums of powers of the deviations from the mean: the textbook sums of the values lose all digits where the mean is large
// against the deviations; those of the deviations give the same figures and keep them.
void FindMoments(std::span<const double> values, long double mean, StatisticsRecord& record) {
  const auto n = static_cast<long double>(values.size());
  long double sum1 = 0;
  long double sum2 = 0;
  long double sum3 = 0;
  long double sum4 = 0;
  for (const double value : values) {
    const long double d = value - mean;
    const long double square = d * d;
    sum1 += d;
    sum2 += square;
    sum3 += square * d;
    sum4 += square * square;
  }
  if (sum2 == 0) {
    record.message = kNoDeviance;
    record.variance = record.skew = record.kurtosis = 0;
    return;
  }
  const long double variance = (sum2 - sum1 * sum1 / n) / (n - 1);
  record.variance = static_cast<double>(variance);
  record.skew = static_cast<double>(sum3 / (n * variance * variance * variance));
  record.kurtosis = static_cast<double>(sum4 / (sum2 * sum2 * n) - 3);
}

}  // namespace

void SortValues(std::vector<double>& values) {
  const auto defined =
      std::partition(values.begin(), values.end(), [](double value) { return !std::isnan(value); });
  std::sort(values.begin(), defined);
}

StatisticsRecord ComputeStatistics(std::span<const double> ascending, double tolerance) {
  StatisticsRecord record;
  if (ascending.empty()) {
    record.count = 0;
    record.sum = 0;
  }
  if (ascending.size() < 2) {
    record.message = kTooFewValues;
    record.unavailable = true;
    return record;
  }
  const long double mean = MeanOf(ascending);
  record.count = static_cast<std::int32_t>(ascending.size());
  record.sum = static_cast<double>(mean * static_cast<long double>(ascending.size()));
  record.mean = static_cast<double>(mean);
  FindQuantiles(ascending, record);
  record.mode = FindMode(ascending, tolerance);
  FindMoments(ascending, mean, record);
  return record;
}

}  // namespace tarnwick
