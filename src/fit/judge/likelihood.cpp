#include "fit/judge/likelihood.h"

#include <cmath>
#include <cstddef>

#include "base/undefined.h"

namespace tarnwick {

double CountDeviance(std::span<const double> y, std::span<const double> f) {
  double sum = 0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    if (!(y[i] >= 0) || !(f[i] > 0)) return kUndefined;
    sum += (y[i] > 0 ? y[i] * std::log(y[i] / f[i]) : 0) - (y[i] - f[i]);
  }
  return 2 * sum;
}

double SumOfLogSquares(std::span<const double> f) {
  double sum = 0;
  for (const double value : f) {
    if (value != 0) sum += 2 * std::log(std::abs(value));
  }
  return sum;
}

}  // namespace tarnwick
