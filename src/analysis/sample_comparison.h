// Two sets of values beside each other: what each is like, and how probable it is that chance alone tells them apart. Mathematics
// over spans; knows no DataSet.
#pragma once

#include <cstddef>
#include <span>

#include "base/undefined.h"

namespace tarnwick {

struct MeanAndDeviation {
  double mean = kUndefined;       ///< of no value
  double deviation = kUndefined;  ///< standard deviation, by n - 1; of less than two
};

/// Of finite values. Carried in extended precision.
MeanAndDeviation MeanAndDeviationOf(std::span<const double> values);

/// What a box and its whiskers are drawn from, with mean and scatter. Quartiles are those of QuantileOf.
struct SampleFigures {
  std::size_t count = 0;
  double mean = kUndefined;
  double deviation = kUndefined;  ///< standard deviation, by n - 1
  double least = kUndefined;
  double lower_quartile = kUndefined;
  double median = kUndefined;
  double upper_quartile = kUndefined;
  double greatest = kUndefined;
};

/// Of the finite values.
SampleFigures FiguresOf(std::span<const double> values);

/// Undefined where the values cannot tell. A probability is that of a difference as large or larger, either way, if both came
/// from one distribution.
struct SampleComparison {
  SampleFigures first, second;
  double difference = kUndefined;  ///< of the means, the second less the first
  double difference_error = kUndefined;
  /// B. L. Welch, Biometrika 34, 28 (1947): means, whatever the variances.
  double t = kUndefined;
  double t_freedom = kUndefined;
  double t_probability = kUndefined;
  /// Fisher's ratio of the variances, the second by the first; for normal scatter.
  double f = kUndefined;
  double f_probability = kUndefined;
  /// Kolmogorov & Smirnov: the greatest distance of the two cumulated shares. Exact up to kMostExactPairs pairs, by G. Schroeer &
  /// D. Trenkler, Computational Statistics & Data Analysis 20, 185 (1995); above by the limit of many.
  double distance = kUndefined;
  double distance_probability = kUndefined;
  bool has_ties =
      false;  ///< equal values in both: the probability is then too large rather than too small
};

inline constexpr double kMostExactPairs = 4e6;

SampleComparison CompareSamples(std::span<const double> first, std::span<const double> second);

}  // namespace tarnwick
