#include "analysis/resampling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr double kMostSteps = 2e7;
/// Part of a step by which the last X may miss a whole number of steps.
constexpr double kSlack = 1e-9;

struct Curve {
  std::vector<double> x;
  std::vector<double> y;
};

/// Equal X once, with their mean.
Curve Distinct(std::span<const double> x, std::span<const double> y) {
  Curve curve;
  for (std::size_t i = 0; i < x.size();) {
    long double sum = 0;
    std::size_t end = i;
    for (; end < x.size() && x[end] == x[i]; ++end) sum += y[end];
    curve.x.push_back(x[i]);
    curve.y.push_back(static_cast<double>(sum / static_cast<long double>(end - i)));
    i = end;
  }
  return curve;
}

/// Slopes of Akima's curve at each point; two imagined ones beyond each end go on as a parabola.
std::vector<double> AkimaSlopes(const Curve& curve) {
  const std::size_t n = curve.x.size();
  if (n < 2) return std::vector<double>(n, 0);
  std::vector<double> m(n + 3);  // m[i + 2]: from point i to the next
  for (std::size_t i = 0; i + 1 < n; ++i)
    m[i + 2] = (curve.y[i + 1] - curve.y[i]) / (curve.x[i + 1] - curve.x[i]);
  if (n == 2) return {m[2], m[2]};
  m[1] = 2 * m[2] - m[3];
  m[0] = 2 * m[1] - m[2];
  m[n + 1] = 2 * m[n] - m[n - 1];
  m[n + 2] = 2 * m[n + 1] - m[n];
  std::vector<double> slopes;
  for (std::size_t i = 0; i < n; ++i) {
    const double after = std::abs(m[i + 3] - m[i + 2]);
    const double before = std::abs(m[i + 1] - m[i]);
    const double sum = after + before;
    // Weights that rounding alone leaves say nothing.
    const bool straight = !(sum > 1e-9 * (std::abs(m[i + 1]) + std::abs(m[i + 2])));
    slopes.push_back(straight ? (m[i + 1] + m[i + 2]) / 2
                              : (after * m[i + 1] + before * m[i + 2]) / sum);
  }
  return slopes;
}

double LinearAt(const Curve& curve, std::size_t right, double x) {
  const std::size_t left = right - 1;
  const double share = (x - curve.x[left]) / (curve.x[right] - curve.x[left]);
  return curve.y[left] + (curve.y[right] - curve.y[left]) * share;
}

double AkimaAt(const Curve& curve, const std::vector<double>& slopes, std::size_t right, double x) {
  const std::size_t left = right - 1;
  const double width = curve.x[right] - curve.x[left];
  const double t = x - curve.x[left];
  const double slope = (curve.y[right] - curve.y[left]) / width;
  const double second = (3 * slope - 2 * slopes[left] - slopes[right]) / width;
  const double third = (slopes[left] + slopes[right] - 2 * slope) / (width * width);
  return curve.y[left] + t * (slopes[left] + t * (second + t * third));
}

Resampled Means(const Curve& curve, double step, std::size_t steps) {
  Resampled result;
  std::size_t i = 0;
  for (std::size_t k = 0; k < steps; ++k) {
    const double x = curve.x.front() + static_cast<double>(k) * step;
    long double sum = 0;
    std::size_t count = 0;
    for (; i < curve.x.size() && curve.x[i] < x + step / 2; ++i, ++count) sum += curve.y[i];
    if (count == 0) {
      ++result.empty;
      continue;
    }
    result.x.push_back(x);
    result.y.push_back(static_cast<double>(sum / static_cast<long double>(count)));
  }
  return result;
}

}  // namespace

Resampled Resample(std::span<const double> x, std::span<const double> y, double step,
                   ResampleMethod method) {
  const Curve curve = Distinct(x, y);
  const double range = curve.x.back() - curve.x.front();
  if (!(range / step <= kMostSteps)) {
    throw Error("Steps of " + GeneralText(step, 6) + " would make more than " +
                GeneralText(kMostSteps) + " points.");
  }
  const auto steps = static_cast<std::size_t>(std::floor(range / step + kSlack)) + 1;
  if (method == ResampleMethod::Mean) return Means(curve, step, steps);
  const std::vector<double> slopes =
      method == ResampleMethod::Akima ? AkimaSlopes(curve) : std::vector<double>();
  Resampled result;
  std::size_t right = 1;
  for (std::size_t k = 0; k < steps; ++k) {
    const double at = std::min(curve.x.front() + static_cast<double>(k) * step, curve.x.back());
    while (right + 1 < curve.x.size() && curve.x[right] < at) ++right;
    result.x.push_back(at);
    if (curve.x.size() == 1) {
      result.y.push_back(curve.y.front());
    } else {
      result.y.push_back(slopes.empty() ? LinearAt(curve, right, at)
                                        : AkimaAt(curve, slopes, right, at));
    }
  }
  return result;
}

}  // namespace tarnwick
