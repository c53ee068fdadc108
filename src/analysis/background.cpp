#include "analysis/background.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarnwick {
namespace {

/// Whether the middle one lies on or above the line from left to right.
bool IsAbove(std::span<const double> x, std::span<const double> y, std::size_t left,
             std::size_t middle, std::size_t right) {
  const double rise = (x[middle] - x[left]) * (y[right] - y[left]);
  const double own = (y[middle] - y[left]) * (x[right] - x[left]);
  return own >= rise;
}

/// Minimises sum w (y - z)^2 + smoothness sum (second differences of z)^2: the banded system by an LDL' decomposition.
/// P. H. C. Eilers, Analytical Chemistry 75, 3631 (2003).
std::vector<double> SmoothWith(std::span<const double> weights, std::span<const double> y,
                               double smoothness) {
  const std::size_t n = y.size();
  std::vector<double> diagonal(n);
  std::vector<double> first(n);   // factors of the unit lower triangle, one below
  std::vector<double> second(n);  // two below
  std::vector<double> z(n);
  // The penalty's bands: D'D of second differences.
  const auto penalty = [&](std::size_t i, int band) -> double {
    const auto has = [&](std::ptrdiff_t row) {
      return row >= 0 && row + 2 < static_cast<std::ptrdiff_t>(n);
    };
    const auto at = static_cast<std::ptrdiff_t>(i);
    double sum = 0;
    constexpr double kRow[] = {1, -2, 1};
    for (int k = 0; k + band < 3; ++k) {
      if (has(at - k)) sum += kRow[k] * kRow[k + band];
    }
    return sum * smoothness;
  };
  for (std::size_t i = 0; i < n; ++i) {
    double d = weights[i] + penalty(i, 0);
    double e = penalty(i, 1);
    double right = weights[i] * y[i];
    if (i > 0) {
      d -= first[i - 1] * first[i - 1] * diagonal[i - 1];
      e -= first[i - 1] * second[i - 1] * diagonal[i - 1];
      right -= first[i - 1] * z[i - 1];
    }
    if (i > 1) {
      d -= second[i - 2] * second[i - 2] * diagonal[i - 2];
      right -= second[i - 2] * z[i - 2];
    }
    diagonal[i] = d;
    first[i] = e / d;
    second[i] = penalty(i, 2) / d;
    z[i] = right;
  }
  for (std::size_t i = n; i-- > 0;) {
    z[i] /= diagonal[i];
    if (i + 1 < n) z[i] -= first[i] * z[i + 1];
    if (i + 2 < n) z[i] -= second[i] * z[i + 2];
  }
  return z;
}

/// Weights of the next round, from what lies below the present line; empty when nothing does.
std::vector<double> NextWeights(std::span<const double> y, std::span<const double> line) {
  double count = 0;
  double sum = 0;
  double squares = 0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double below = y[i] - line[i];
    if (!(below < 0)) continue;
    ++count;
    sum += below;
    squares += below * below;
  }
  if (count < 2) return {};
  const double mean = sum / count;
  const double deviation = std::sqrt(std::max(0.0, squares / count - mean * mean));
  if (!(deviation > 0)) return {};
  std::vector<double> weights(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double t = 2 * (y[i] - line[i] - (2 * deviation - mean)) / deviation;
    weights[i] = 1 / (1 + std::exp(std::min(t, 700.0)));  // beyond that exp overflows
  }
  return weights;
}

double Distance(std::span<const double> one, std::span<const double> other) {
  double squares = 0;
  double size = 0;
  for (std::size_t i = 0; i < one.size(); ++i) {
    squares += (one[i] - other[i]) * (one[i] - other[i]);
    size += one[i] * one[i];
  }
  return std::sqrt(squares / size);
}

}  // namespace

std::vector<double> RubberBand(std::span<const double> x, std::span<const double> y) {
  std::vector<std::size_t> hull;
  for (std::size_t i = 0; i < x.size(); ++i) {
    while (hull.size() > 1 && IsAbove(x, y, hull[hull.size() - 2], hull.back(), i)) hull.pop_back();
    hull.push_back(i);
  }
  std::vector<double> band(y.begin(), y.end());
  for (std::size_t k = 1; k < hull.size(); ++k) {
    const std::size_t from = hull[k - 1];
    const std::size_t to = hull[k];
    for (std::size_t i = from + 1; i < to; ++i) {
      const double run = x[to] - x[from];
      band[i] = run > 0 ? y[from] + (y[to] - y[from]) * ((x[i] - x[from]) / run) : y[from];
    }
  }
  return band;
}

std::vector<double> AsymmetricBaseLine(std::span<const double> y, const ArPls& options,
                                       const CancelPoint& cancel) {
  std::vector<double> line(y.begin(), y.end());
  if (y.size() < 3) return line;
  std::vector<double> weights(y.size(), 1);
  for (int round = 0; round < options.rounds; ++round) {
    cancel.Pass();
    line = SmoothWith(weights, y, options.smoothness);
    std::vector<double> next = NextWeights(y, line);
    if (next.empty()) break;
    const double change = Distance(weights, next);
    weights = std::move(next);
    if (change < options.ratio) break;
  }
  return line;
}

}  // namespace tarnwick
