#include "analysis/local_noise.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "base/quantile.h"

namespace tarnwick {
namespace {

/// Points on either side that tell the noise of one: few against a peak that is wide enough for its noise to show as peaks of
/// their own, many against one of some points, which is not to be taken for noise itself.
constexpr std::size_t kReach = 31;

/// From lag to twice the lag the scatter of independent values stays and a smooth curve's bend grows by 4. That of values
/// smoothed in a window grows by 1.41 (running means) to 1.7 (parabolas in few points), then by more up to the window's width;
/// that of what hangs together from day to day grows by less and less.
constexpr double kStays = 1.1;
constexpr double kLeastOfSmoothed = 1.3;
constexpr double kMostOfSmoothed = 1.75;
constexpr double kAsMuch = 0.97;  // but for chance
constexpr double kBends = 2.2;
constexpr std::size_t kLeastLag = 8;  // scatter on a bending curve passes through two doublings

/// Of the points from `first` to before `end`, with `lag` points on either side of each.
double Scatter(const PeakCurve& curve, std::size_t first, std::size_t end, std::size_t lag) {
  std::vector<double> off;
  off.reserve(end - first);
  for (std::size_t i = first; i < end; ++i) {
    const double run = curve.x[i + lag] - curve.x[i - lag];
    if (!(run > 0)) continue;
    const double share = (curve.x[i] - curve.x[i - lag]) / run;
    const double line = curve.y[i - lag] * (1 - share) + curve.y[i + lag] * share;
    const double spread = std::sqrt(1 + share * share + (1 - share) * (1 - share));
    off.push_back(std::abs(curve.y[i] - line) / spread);
  }
  return off.empty() ? 0 : MedianOf(off) / kMedianOfNormal;
}

struct Lagged {
  std::size_t lag = 1;
  double noise = 0;
};

bool LooksSmoothed(const PeakCurve& curve, double of_neighbours) {
  const double at_two = NoiseOf(curve, 2);
  const double first = at_two / of_neighbours;
  return first > kLeastOfSmoothed && first < kMostOfSmoothed &&
         NoiseOf(curve, 4) / at_two > kAsMuch * first;
}

/// The smallest lag at which smoothing makes the scatter grow no more; 1 where there is none, or none that ends.
Lagged WithoutSmoothing(const PeakCurve& curve, double of_neighbours) {
  const Lagged neighbours{1, of_neighbours};
  if (!LooksSmoothed(curve, of_neighbours)) return neighbours;
  Lagged present = neighbours;
  while (present.lag * 16 <= curve.x.size()) {
    const double next = NoiseOf(curve, 2 * present.lag);
    const double growth = next / present.noise;
    if (!(growth > kStays && growth < kBends))
      return present.lag >= kLeastLag ? present : neighbours;
    present = {2 * present.lag, next};
  }
  return neighbours;
}

}  // namespace

double NoiseOf(const PeakCurve& curve, std::size_t lag) {
  if (curve.x.size() < 2 * lag + 1) return 0;
  return Scatter(curve, lag, curve.x.size() - lag, lag);
}

LocalNoise::LocalNoise(const PeakCurve& curve, std::span<const double> errors)
    : curve_(curve), errors_(errors), of_neighbours_(NoiseOf(curve)) {
  std::vector<double> y(curve.y.begin(), curve.y.end());
  if (!y.empty()) middle_ = MedianOf(y);
  const Lagged far = WithoutSmoothing(curve, of_neighbours_);
  lag_ = far.lag;
  if (lag_ > 1) gain_ = far.noise / of_neighbours_;
}

bool LocalNoise::HasError(std::size_t index) const {
  return !errors_.empty() && errors_[index] > 0;
}

double LocalNoise::MostAt(double y) const {
  if (!(middle_ > 0)) return std::numeric_limits<double>::infinity();
  return of_neighbours_ * std::sqrt(std::max(y / middle_, 1.0));
}

double LocalNoise::At(std::size_t index) const {
  if (HasError(index)) return errors_[index];
  const std::size_t last = curve_.x.size() - 1;
  const std::size_t first = std::max<std::size_t>(index, kReach + 1) - kReach;
  const std::size_t end = std::min(index + kReach + 1, last);
  const double here = std::min(Scatter(curve_, first, end, 1), MostAt(curve_.y[index]));
  return gain_ * std::max(of_neighbours_, here);
}

std::vector<Summit> SummitsAbove(const PeakCurve& curve, const LocalNoise& noise, double times) {
  std::vector<Summit> summits = FindSummits(curve, 0);
  const double overall = times * noise.Overall();
  std::erase_if(summits, [&](const Summit& summit) {
    if (!noise.HasError(summit.index) && summit.prominence < overall) return true;
    return summit.prominence < times * noise.At(summit.index);
  });
  return summits;
}

}  // namespace tarnwick
