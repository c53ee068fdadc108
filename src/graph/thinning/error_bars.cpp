#include "graph/thinning/error_bars.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

/// An error of 0 has none.
BarEnds BarAround(double value, double error) {
  return error > 0 ? BarEnds{value - error, value + error} : BarEnds();
}

void Widen(BarEnds& box, const BarEnds& bar) {
  if (!bar.Exist()) return;
  tarnwick::Widen(box.low, box.high, bar.low);
  tarnwick::Widen(box.low, box.high, bar.high);
}

std::vector<BarEnds> BoxesOf(std::span<const BarEnds> bars) {
  std::vector<BarEnds> boxes;
  boxes.reserve(bars.size() / ErrorBars::kBox + 1);
  for (std::size_t i = 0; i < bars.size(); ++i) {
    if (i % ErrorBars::kBox == 0) boxes.emplace_back();
    Widen(boxes.back(), bars[i]);
  }
  return boxes;
}

std::vector<BarEnds> CoresOf(std::span<const BarEnds> bars) {
  std::vector<BarEnds> cores;
  cores.reserve(bars.size() / ErrorBars::kBox + 1);
  for (std::size_t i = 0; i < bars.size(); ++i) {
    if (i % ErrorBars::kBox == 0) cores.push_back(bars[i]);
    BarEnds& core = cores.back();
    const bool common = bars[i].low <= core.high && bars[i].high >= core.low;
    core = common ? BarEnds{std::max(core.low, bars[i].low), std::min(core.high, bars[i].high)}
                  : BarEnds();
  }
  return cores;
}

/// How far bars widen low <= value <= high.
class Reach {
 public:
  Reach(double low, double high, AxisKind axis)
      : low_(low), high_(high), least_(axis == AxisKind::Linear ? -HUGE_VAL : LeastOf(low)) {}

  void Take(const BarEnds& bar) {
    if (!bar.Exist() || !std::isfinite(bar.low) || !std::isfinite(bar.high)) return;
    low_ = std::min(low_, std::max(bar.low, least_));
    high_ = std::max(high_, bar.high);
  }
  double Low() const { return low_; }
  double High() const { return high_; }

 private:
  static double LeastOf(double low) {
    constexpr double kDecade = 10;
    return low > 0 ? low / kDecade : low;
  }

  double low_, high_, least_;
};

}  // namespace

ErrorBars::ErrorBars(const PointChain& points, const PointErrors& errors) {
  if (HasYErrors(errors)) y_.reserve(points.Size());
  if (HasXErrors(errors)) x_.reserve(points.Size());
  points.ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      const Point point{chunk.chunk->Id(i), chunk.x[i], chunk.y[i], 0};
      if (HasYErrors(errors)) {
        const double error = YErrorOf(errors, point);
        y_.push_back(BarAround(point.y, error));
      }
      if (HasXErrors(errors)) {
        const double error = XErrorOf(errors, point);
        x_.push_back(BarAround(point.x, error));
      }
    }
  });
  y_boxes_ = BoxesOf(y_);
  x_boxes_ = BoxesOf(x_);
  x_cores_ = CoresOf(x_);
}

Extremes WithBars(const Extremes& extremes, const ErrorBars& bars, const PointChain& points,
                  const BaseLine& line, AxisKind x, AxisKind y) {
  Reach x_reach(extremes.x_min, extremes.x_max, x);
  for (const BarEnds& box : bars.XBoxes()) x_reach.Take(box);
  Reach y_reach(extremes.y_min, extremes.y_max, y);
  if (line.slope == 0) {
    for (const BarEnds& box : bars.YBoxes()) {
      y_reach.Take({box.low - line.offset, box.high - line.offset});
    }
  } else if (!bars.Y().empty()) {
    std::size_t i = 0;
    points.ForEachPoint([&](double at, double) {
      const BarEnds& bar = bars.Y()[i++];
      y_reach.Take({line.CorrectedY(at, bar.low), line.CorrectedY(at, bar.high)});
    });
  }
  return {x_reach.Low(), x_reach.High(), y_reach.Low(), y_reach.High()};
}

}  // namespace tarnwick
