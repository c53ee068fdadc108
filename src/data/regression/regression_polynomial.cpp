// Regressions whose result is a polynomial in X.

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/quantile.h"
#include "base/undefined.h"
#include "data/regression/regression.h"

namespace tarnwick {

namespace {

struct Samples {
  std::vector<double> x;
  std::vector<double> y;
};

bool TakesPart(double x, double y) {
  return std::isfinite(x) && std::isfinite(y);
}

// Calls visit(x, y) for the points that take part.
template <class Visit>
void ForEachSample(const PointChain& points, Visit visit) {
  points.ForEachPoint([&](double x, double y) {
    if (TakesPart(x, y)) visit(x, y);
  });
}

// Count, mean of X and Y, and the greatest distance of an X from the mean.
struct Frame {
  long double count = 0;
  // Extended: the polynomials are orthogonal only about the mean itself.
  long double center = 0;
  double scale = 1;
  long double mean_y = 0;
};

Frame FrameOf(const PointChain& points) {
  Frame frame;
  long double sum_x = 0;
  long double sum_y = 0;
  ForEachSample(points, [&](double x, double y) {
    frame.count += 1;
    sum_x += x;
    sum_y += y;
  });
  if (frame.count == 0) return frame;
  frame.center = sum_x / frame.count;
  frame.mean_y = sum_y / frame.count;
  long double reach = 0;
  ForEachSample(points,
                [&](double x, double) { reach = std::max(reach, std::abs(x - frame.center)); });
  if (reach > 0) frame.scale = static_cast<double>(reach);
  return frame;
}

// Sums over the first orthogonal polynomial p1 = u and the deviations of Y from their mean.
struct LineSums {
  long double square = 0;
  long double cube = 0;
  long double with_y = 0;
};

LineSums SumsOf(const PointChain& points, const Frame& frame) {
  LineSums sums;
  ForEachSample(points, [&](double x, double y) {
    const long double u = (static_cast<long double>(x) - frame.center) / frame.scale;
    sums.square += u * u;
    sums.cube += u * u * u;
    sums.with_y += u * (y - frame.mean_y);
  });
  return sums;
}

bool HasThreeX(const PointChain& points) {
  int different = 0;
  double last = 0;
  ForEachSample(points, [&](double x, double) {
    if (different == 0 || x != last) ++different;
    last = x;
  });
  return different > 2;
}

Quadratic Constant(const Frame& frame) {
  return {static_cast<double>(frame.center), frame.scale, 0, 0,
          frame.count == 0 ? kUndefined : static_cast<double>(frame.mean_y)};
}

// The outer thirds of the points, and what the slope does to them. The difference of their median residuals falls as the
// slope rises, so that its zero can be bracketed.
class OuterThirds {
 public:
  explicit OuterThirds(const Samples& samples)
      : samples_(samples), third_(std::max<std::size_t>(1, samples.x.size() / 3)) {}

  double Distance() const {
    return MedianFrom(Right(), [&](std::size_t i) { return samples_.x[i]; }) -
           MedianFrom(0, [&](std::size_t i) { return samples_.x[i]; });
  }
  double Difference(double slope) const {
    const auto residual = [&](std::size_t i) { return samples_.y[i] - slope * samples_.x[i]; };
    return MedianFrom(Right(), residual) - MedianFrom(0, residual);
  }

 private:
  std::size_t Right() const { return samples_.x.size() - third_; }
  template <class Value>
  double MedianFrom(std::size_t begin, Value value) const {
    std::vector<double> values(third_);
    for (std::size_t i = 0; i < third_; ++i) values[i] = value(begin + i);
    return MedianOf(values);
  }

  const Samples& samples_;
  std::size_t third_;
};

struct SlopeAt {
  double slope = 0;
  double difference = 0;
};

// The slope at which the difference of the median residuals vanishes, by regula falsi with the Illinois weights. Rounding
// may leave a difference at the very slope; of all that were tried the one with the least is taken.
double ResistantSlope(const OuterThirds& thirds) {
  constexpr int kMostSteps = 100;
  const double distance = thirds.Distance();
  if (!(distance > 0)) return 0;
  SlopeAt best{0, std::numeric_limits<double>::infinity()};
  const auto at = [&](double slope) {
    const SlopeAt tried{slope, thirds.Difference(slope)};
    if (std::abs(tried.difference) < std::abs(best.difference)) best = tried;
    return tried;
  };
  SlopeAt low = at(0);
  double step = low.difference / distance;
  SlopeAt high = at(low.slope + step);
  for (int i = 0; i < kMostSteps && low.difference * high.difference > 0; ++i) {
    low = high;
    step *= 2;
    high = at(low.slope + step);
  }
  for (int i = 0; i < kMostSteps && low.difference != 0 && high.difference != 0; ++i) {
    const double next_slope = (low.slope * high.difference - high.slope * low.difference) /
                              (high.difference - low.difference);
    if (!std::isfinite(next_slope) || next_slope == low.slope || next_slope == high.slope) break;
    const SlopeAt next = at(next_slope);
    if ((next.difference > 0) == (high.difference > 0)) {
      low.difference /= 2;
    } else {
      low = high;
    }
    high = next;
  }
  return best.slope;
}

}  // namespace

Quadratic FitLine(const PointChain& points) {
  const Frame frame = FrameOf(points);
  const LineSums sums = SumsOf(points, frame);
  Quadratic line = Constant(frame);
  if (sums.square > 0) line.b = static_cast<double>(sums.with_y / sums.square);
  return line;
}

// The second polynomial is p2 = u^2 - gamma u - delta; each coefficient is a quotient of sums of its own.
Quadratic FitParabola(const PointChain& points) {
  const Frame frame = FrameOf(points);
  const LineSums sums = SumsOf(points, frame);
  Quadratic result = Constant(frame);
  if (!(sums.square > 0)) return result;
  const long double gamma = sums.cube / sums.square;
  const long double delta = sums.square / frame.count;
  long double square = 0;
  long double with_y = 0;
  ForEachSample(points, [&](double x, double y) {
    const long double u = (static_cast<long double>(x) - frame.center) / frame.scale;
    const long double p2 = u * u - gamma * u - delta;
    square += p2 * p2;
    with_y += p2 * (y - frame.mean_y);
  });
  const long double slope = sums.with_y / sums.square;
  // Two different X leave nothing but rounding of p2.
  const long double curvature = HasThreeX(points) && square > 0 ? with_y / square : 0;
  result.a = static_cast<double>(curvature);
  result.b = static_cast<double>(slope - curvature * gamma);
  result.c = static_cast<double>(frame.mean_y - curvature * delta);
  return result;
}

Quadratic FitRobustLine(const PointChain& points) {
  Samples samples;
  Quadratic line = Constant(FrameOf(points));
  ForEachSample(points, [&](double x, double y) {
    samples.x.push_back((x - line.center) / line.scale);
    samples.y.push_back(y);
  });
  if (samples.x.empty()) return line;
  line.b = ResistantSlope(OuterThirds(samples));
  std::vector<double>& residuals = samples.y;
  for (std::size_t i = 0; i < residuals.size(); ++i) residuals[i] -= line.b * samples.x[i];
  line.c = MedianOf(residuals);
  return line;
}

void EvaluateInto(PointChain& points, const Quadratic& polynomial) {
  points.FillRegression([&](const ChunkView& chunk, std::span<double> values) {
    std::transform(chunk.x.begin(), chunk.x.end(), values.begin(), polynomial);
  });
}

}  // namespace tarnwick
