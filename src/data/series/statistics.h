// Figures of one list of values: mean, quantiles by position, mode, moments. Mathematics over spans; knows no DataSet.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarnwick {

/// The statistics of n values. What could not be computed is unset.
struct StatisticsRecord {
  std::string message;       ///< empty, or why some values are missing
  bool unavailable = false;  ///< fewer than two values
  std::optional<std::int32_t> count;
  std::optional<double> mean;
  std::optional<double> median;  ///< the value at position n div 2, from 1
  std::optional<double> mode;    ///< the value that made the longest run within the tolerance
  std::optional<double> sum;
  std::optional<double> variance;        ///< of a sample: divided by n - 1
  std::optional<double> skew;            ///< sum of cubed deviations / (n variance^3)
  std::optional<double> kurtosis;        ///< sum of fourth powers / (n (sum of squares)^2) - 3
  std::optional<double> lower_quintile;  ///< position n div 5; unset when that is 0
  std::optional<double> upper_quintile;  ///< position n - n div 5
  std::optional<double> lower_quartile;  ///< position n div 4; unset when that is 0
  std::optional<double> upper_quartile;  ///< position n - n div 4
  bool operator==(const StatisticsRecord&) const = default;
};

/// Sorts ascending, undefined values last.
void SortValues(std::vector<double>& values);

/// The record of values in ascending order, undefined ones last. `tolerance` is the distance from a run's start within which
/// values count towards the mode. Sums run in extended precision.
StatisticsRecord ComputeStatistics(std::span<const double> ascending, double tolerance);

}  // namespace tarnwick
