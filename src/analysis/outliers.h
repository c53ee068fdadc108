// Values that do not belong to the others. Mathematics over spans; knows no DataSet.
#pragma once

#include <span>
#include <vector>

#include "base/cancel_point.h"

namespace tarnwick {

/// What is expected of a value, and whether it lies too far from that.
struct Expected {
  double y = 0;
  bool is_outlier = false;
};

/// By the median of the `window` values around each one (of those that there are at the ends), and `times` their scaled median
/// deviation from it: F. R. Hampel, Journal of the American Statistical Association 69, 383 (1974); as a filter R. K. Pearson,
/// IEEE Transactions on Control Systems Technology 10, 55 (2002). Throws Error as RunningMedian for impossible windows.
std::vector<Expected> HampelOutliers(std::span<const double> y, int window, double times,
                                     const CancelPoint& cancel = {});

/// Beyond the quartiles of all values by more than `times` their distance; expected is the nearer bound. J. W. Tukey,
/// Exploratory Data Analysis (1977); quartiles are those of QuantileOf.
std::vector<Expected> TukeyOutliers(std::span<const double> y, double times);

}  // namespace tarnwick
