// Regressions that smooth along the order of the points, one value per point.

#include <cmath>
#include <cstddef>
#include <deque>
#include <limits>

#include "base/error.h"
#include "base/undefined.h"
#include "data/regression/regression.h"

namespace tarnwick {

namespace {

// Truncation of 1 / alpha. A negative quotient counts as a window wider than any DataSet.
std::size_t WindowOf(double alpha) {
  constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();
  constexpr double kWidest = 4294967295.0;
  const double quotient = std::trunc(1 / alpha);
  if (IsUndefined(quotient) || (quotient > -1 && quotient < 2)) {
    throw Error("Invalid Running Average limit");
  }
  return quotient < 0 || quotient > kWidest ? kUnlimited : static_cast<std::size_t>(quotient);
}

}  // namespace

void SmoothExponentially(PointChain& points, double alpha) {
  double smoothed = kUndefined;
  points.FillRegression([&](const ChunkView& chunk, std::span<double> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double y = chunk.y[i];
      if (std::isfinite(y)) {
        smoothed = IsUndefined(smoothed) ? y : alpha * y + (1 - alpha) * smoothed;
      }
      values[i] = smoothed;
    }
  });
}

void AverageRunning(PointChain& points, double alpha) {
  const std::size_t window = WindowOf(alpha);
  std::deque<double> queue;
  long double sum = 0;
  points.FillRegression([&](const ChunkView& chunk, std::span<double> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double y = chunk.y[i];
      if (std::isfinite(y)) {
        if (queue.size() == window) {
          sum -= queue.front();
          queue.pop_front();
        }
        queue.push_back(y);
        sum += y;
      }
      values[i] = queue.empty() ? kUndefined
                                : static_cast<double>(sum / static_cast<long double>(queue.size()));
    }
  });
}

}  // namespace tarnwick
