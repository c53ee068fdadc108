// Values at even steps of X from values at any. Mathematics over spans; knows no DataSet.
#pragma once

#include <span>
#include <vector>

namespace tarnwick {

/// How a value between the given ones is made: on the straight line between neighbours; on H. Akima's curve, Journal of the ACM
/// 17, 589 (1970); as the mean of those within half a step.
enum class ResampleMethod { Linear, Akima, Mean };

struct Resampled {
  std::vector<double> x;
  std::vector<double> y;
  std::size_t empty = 0;  ///< steps left out, since no value lies within
};

/// From the first X in steps up to the last. Of equal X, which rises, the mean counts. `step` is above 0. Throws Error for more
/// than 2e7 steps.
Resampled Resample(std::span<const double> x, std::span<const double> y, double step,
                   ResampleMethod method);

}  // namespace tarnwick
