#include "analysis/peak_figures.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarnwick {
namespace {

/// The first index of each strict local maximum, plateaus being one point.
std::vector<std::size_t> LocalMaxima(std::span<const double> y) {
  std::vector<std::size_t> maxima;
  for (std::size_t i = 1; i + 1 < y.size();) {
    std::size_t last = i;  // of the plateau
    if (y[i - 1] < y[i]) {
      while (last + 1 < y.size() && y[last + 1] == y[i]) ++last;
      if (last + 1 < y.size() && y[last + 1] < y[i]) maxima.push_back((i + last) / 2);
    }
    i = last + 1;
  }
  return maxima;
}

/// For each maximum in walking order the lowest value since higher ground, or since the beginning. `valleys[i]` is the lowest
/// value before maximum i, since the one before.
std::vector<double> LowestSinceHigher(std::span<const double> heights,
                                      std::span<const double> valleys) {
  struct Ground {
    double height;
    double lowest;
  };
  std::vector<Ground> passed;
  std::vector<double> lowest;
  for (std::size_t i = 0; i < heights.size(); ++i) {
    double low = valleys[i];
    while (!passed.empty() && passed.back().height <= heights[i]) {
      low = std::min(low, passed.back().lowest);
      passed.pop_back();
    }
    passed.push_back({heights[i], low});
    lowest.push_back(low);
  }
  return lowest;
}

/// The lowest value of each stretch between neighbouring maxima, the ends of the curve among them: one more than maxima.
std::vector<double> ValleysBetween(std::span<const double> y, std::span<const std::size_t> maxima) {
  std::vector<double> valleys;
  std::size_t from = 0;
  for (std::size_t i = 0; i <= maxima.size(); ++i) {
    const std::size_t to = i < maxima.size() ? maxima[i] : y.size() - 1;
    valleys.push_back(*std::min_element(y.begin() + static_cast<std::ptrdiff_t>(from),
                                        y.begin() + static_cast<std::ptrdiff_t>(to) + 1));
    from = to;
  }
  return valleys;
}

/// Where the curve falls to `level` on the way from `top` to `end`; nothing when it does not.
std::optional<double> CrossingFrom(const PeakCurve& curve, std::size_t top, std::size_t end,
                                   double level) {
  const std::ptrdiff_t step = end < top ? -1 : 1;
  for (std::size_t i = top; i != end;) {
    const std::size_t next = i + static_cast<std::size_t>(step);
    if (curve.y[next] <= level) {
      const double share = (curve.y[i] - level) / (curve.y[i] - curve.y[next]);
      return curve.x[i] + share * (curve.x[next] - curve.x[i]);
    }
    i = next;
  }
  return std::nullopt;
}

double AreaBetween(const PeakCurve& curve, std::size_t from, std::size_t to) {
  long double area = 0;
  for (std::size_t i = from; i < to; ++i) {
    area += 0.5L * (static_cast<long double>(curve.x[i + 1]) - curve.x[i]) *
            (static_cast<long double>(curve.y[i]) + curve.y[i + 1]);
  }
  return static_cast<double>(area);
}

std::size_t LowestBetween(std::span<const double> y, std::size_t from, std::size_t to) {
  const auto begin = y.begin() + static_cast<std::ptrdiff_t>(from);
  const auto end = y.begin() + static_cast<std::ptrdiff_t>(to) + 1;
  return static_cast<std::size_t>(std::min_element(begin, end) - y.begin());
}

PeakFigures Measure(const PeakCurve& curve, const Summit& summit, std::size_t left,
                    std::size_t right) {
  const double top = curve.y[summit.index];
  PeakFigures figures{.x = curve.x[summit.index],
                      .height = top,
                      .prominence = summit.prominence,
                      .area = AreaBetween(curve, left, right),
                      .left_valley = curve.x[left],
                      .right_valley = curve.x[right]};
  const double level = top - summit.prominence / 2;
  const std::optional<double> begin = CrossingFrom(curve, summit.index, 0, level);
  const std::optional<double> end = CrossingFrom(curve, summit.index, curve.x.size() - 1, level);
  if (begin && end) {
    figures.width = *end - *begin;
    figures.asymmetry = (*end - figures.x) / (figures.x - *begin);
  }
  return figures;
}

}  // namespace

std::vector<Summit> FindSummits(const PeakCurve& curve, double least) {
  if (curve.y.size() < 3) return {};
  const std::vector<std::size_t> maxima = LocalMaxima(curve.y);
  std::vector<double> heights;
  heights.reserve(maxima.size());
  for (const std::size_t i : maxima) heights.push_back(curve.y[i]);
  std::vector<double> valleys = ValleysBetween(curve.y, maxima);
  const std::vector<double> left = LowestSinceHigher(heights, valleys);
  std::reverse(heights.begin(), heights.end());
  std::reverse(valleys.begin(), valleys.end());
  const std::vector<double> right = LowestSinceHigher(heights, valleys);

  std::vector<Summit> summits;
  for (std::size_t i = 0; i < maxima.size(); ++i) {
    const double ground = std::max(left[i], right[maxima.size() - 1 - i]);
    const double prominence = curve.y[maxima[i]] - ground;
    if (prominence >= least) summits.push_back({maxima[i], prominence});
  }
  return summits;
}

std::vector<PeakFigures> MeasurePeaks(const PeakCurve& curve, std::span<const Summit> summits) {
  std::vector<PeakFigures> peaks;
  std::size_t left = summits.empty() ? 0 : LowestBetween(curve.y, 0, summits.front().index);
  for (std::size_t i = 0; i < summits.size(); ++i) {
    const std::size_t next = i + 1 < summits.size() ? summits[i + 1].index : curve.y.size() - 1;
    const std::size_t right = LowestBetween(curve.y, summits[i].index, next);
    peaks.push_back(Measure(curve, summits[i], left, right));
    left = right;
  }
  return peaks;
}

}  // namespace tarnwick
