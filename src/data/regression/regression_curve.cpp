// Regressions whose result is a curve of its own: cubic spline and kernel smoother.

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/undefined.h"
#include "data/regression/regression.h"

namespace tarnwick {

namespace {

struct Knots {
  std::vector<double> x;  // strictly ascending where a spline goes through them
  std::vector<double> y;
};

enum class EqualX { Dropped, Kept };

Knots KnotsOf(const PointChain& points, EqualX equal_x) {
  Knots knots;
  points.ForEachPoint([&](double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    if (equal_x == EqualX::Dropped && !knots.x.empty() && x <= knots.x.back()) return;
    knots.x.push_back(x);
    knots.y.push_back(y);
  });
  return knots;
}

constexpr double kNaturalSlope = 9.9e29;  // an end slope from here on asks for a natural spline

// The tridiagonal system of the cubic spline for the second derivatives at the knots, solved by elimination and back
// substitution (J. H. Ahlberg, E. N. Nilson, J. L. Walsh, The Theory of Splines and Their Applications, 1967).
std::vector<double> SecondDerivatives(const Knots& knots, double end_slope) {
  const std::vector<double>& x = knots.x;
  const std::vector<double>& y = knots.y;
  const std::size_t n = x.size();
  const bool clamped = end_slope < kNaturalSlope;
  const auto slope = [&](std::size_t i) { return (y[i + 1] - y[i]) / (x[i + 1] - x[i]); };
  std::vector<double> second(n, 0);
  std::vector<double> rest(n, 0);
  if (clamped) {
    second[0] = -0.5;
    rest[0] = 3 / (x[1] - x[0]) * (slope(0) - end_slope);
  }
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const double share = (x[i] - x[i - 1]) / (x[i + 1] - x[i - 1]);
    const double pivot = share * second[i - 1] + 2;
    const double bend = 6 * (slope(i) - slope(i - 1)) / (x[i + 1] - x[i - 1]);
    second[i] = (share - 1) / pivot;
    rest[i] = (bend - share * rest[i - 1]) / pivot;
  }
  double last_share = 0;
  double last_rest = 0;
  if (clamped) {
    last_share = 0.5;
    last_rest = 3 / (x[n - 1] - x[n - 2]) * (end_slope - slope(n - 2));
  }
  second[n - 1] = (last_rest - last_share * rest[n - 2]) / (last_share * second[n - 2] + 1);
  for (std::size_t i = n - 1; i-- > 0;) second[i] = second[i] * second[i + 1] + rest[i];
  return second;
}

double SplineValue(const Knots& knots, const std::vector<double>& second, std::size_t i, double x) {
  const double width = knots.x[i + 1] - knots.x[i];
  const double left = (knots.x[i + 1] - x) / width;
  const double right = (x - knots.x[i]) / width;
  return left * knots.y[i] + right * knots.y[i + 1] +
         ((left * left * left - left) * second[i] +
          (right * right * right - right) * second[i + 1]) *
             width * width / 6;
}

// Gives every point that is a knot its second derivative.
void StoreSecondDerivatives(PointChain& points, const Knots& knots,
                            const std::vector<double>& second) {
  std::size_t knot = 0;
  points.FillRegression([&](const ChunkView& chunk, std::span<double> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const bool is_knot =
          knot < knots.x.size() && chunk.x[i] == knots.x[knot] && std::isfinite(chunk.y[i]);
      values[i] = is_knot ? second[knot++] : 0;
    }
  });
}

PointChain CurveOf(const std::vector<double>& x, const std::vector<double>& values) {
  PointChain curve;
  curve.AppendRun(1, x, values);
  curve.FillRegression([](const ChunkView& chunk, std::span<double> regression) {
    std::copy(chunk.y.begin(), chunk.y.end(), regression.begin());
  });
  return curve;
}

// The kernel-weighted mean of the points from `begin` to `end` (E. A. Nadaraya, G. S. Watson, 1964). Weights are relative
// to that of the nearest point, so that a gap many h wide still has a value.
double WeightedMean(const Knots& knots, std::size_t begin, std::size_t end, double x, double h) {
  const auto squared_distance = [&](std::size_t i) {
    const double u = (knots.x[i] - x) / h;
    return u * u;
  };
  double nearest = squared_distance(begin);
  for (std::size_t i = begin + 1; i < end; ++i) nearest = std::min(nearest, squared_distance(i));
  double weights = 0;
  double sum = 0;
  for (std::size_t i = begin; i < end; ++i) {
    const double weight = std::exp(0.5 * (nearest - squared_distance(i)));
    weights += weight;
    sum += weight * knots.y[i];
  }
  return sum / weights;
}

}  // namespace

double CurveSampling::Step() const {
  return (x_max - x_min) / steps;
}

std::int32_t CurveSampling::MostSteps(std::size_t points) {
  constexpr std::size_t kAlways = 10'000;
  constexpr std::size_t kPerPoint = 10;
  constexpr std::size_t kMost = 1'000'000;
  return static_cast<std::int32_t>(std::min(kAlways + kPerPoint * std::min(points, kMost), kMost));
}

std::vector<double> CurveSampling::Abscissae() const {
  std::vector<double> x;
  const double h = Step();
  if (steps <= 0 || !(h > 0) || !std::isfinite(h)) return x;
  const double end = x_max + 1e-5 * h;
  for (std::int32_t k = 0; k <= steps; ++k) {
    const double here = x_min + k * h;
    if (here > end) break;
    x.push_back(here);
  }
  return x;
}

PointChain SplineCurve(PointChain& points, const CurveSampling& sampling, double end_slope) {
  const Knots knots = KnotsOf(points, EqualX::Dropped);
  if (knots.x.size() < 2) return {};
  const std::vector<double> second = SecondDerivatives(knots, end_slope);
  StoreSecondDerivatives(points, knots, second);
  const std::vector<double> x = sampling.Abscissae();
  std::vector<double> values;
  values.reserve(x.size());
  std::size_t piece = 0;
  for (const double here : x) {
    while (piece + 2 < knots.x.size() && here > knots.x[piece + 1]) ++piece;
    values.push_back(SplineValue(knots, second, piece, here));
  }
  return CurveOf(x, values);
}

PointChain SmoothedCurve(const PointChain& points, const CurveSampling& sampling) {
  constexpr double kReach = 5;  // in h: what lies beyond weighs less than 4e-6 of a point at X
  const Knots knots = KnotsOf(points, EqualX::Kept);
  if (knots.x.empty()) return {};
  const double h = sampling.Step();
  const std::vector<double> x = sampling.Abscissae();
  std::vector<double> values;
  values.reserve(x.size());
  std::size_t begin = 0;
  std::size_t behind = 0;  // the first knot right of X
  std::size_t end = 0;
  const std::size_t n = knots.x.size();
  for (const double here : x) {
    while (begin < n && knots.x[begin] < here - kReach * h) ++begin;
    while (behind < n && knots.x[behind] <= here) ++behind;
    while (end < n && knots.x[end] <= here + kReach * h) ++end;
    // The neighbours of X always take part, however far they are.
    const std::size_t from = std::min(begin, behind == 0 ? 0 : behind - 1);
    const std::size_t to = std::max(end, std::min(behind + 1, n));
    values.push_back(WeightedMean(knots, from, to, here, h));
  }
  return CurveOf(x, values);
}

}  // namespace tarnwick
