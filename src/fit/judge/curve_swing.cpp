#include "fit/judge/curve_swing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "fit/judge/curve_turns.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostGaps = 4096;
/// Parts into which a gap is cut.
constexpr std::size_t kParts = 8;
/// The points at the gap's ends, which lead its abscissae.
constexpr std::size_t kEnds = 2;
constexpr std::size_t kAbscissae = kEnds + kParts - 1;
constexpr double kFree = 0.45;
/// Of a distance between points: what they may stray by to be even.
constexpr double kUneven = 0.01;
/// Relative to the curve, rounding.
constexpr double kRounding = 1e-9;

void AddGap(std::span<const double> x, std::size_t i, std::vector<double>& abscissae) {
  abscissae.insert(abscissae.end(), {x[i], x[i + 1]});
  for (std::size_t part = 1; part < kParts; ++part) {
    const double share = static_cast<double>(part) / kParts;
    abscissae.push_back(x[i] + share * (x[i + 1] - x[i]));
  }
}

bool AreEven(std::span<const double> x) {
  const double distance = (x.back() - x.front()) / static_cast<double>(x.size() - 1);
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    if (!(std::abs(x[i + 1] - x[i] - distance) <= kUneven * distance)) return false;
  }
  return true;
}

/// How often the curve turns from one point to the next. Of each gap's values the last is the next one's first.
double TurnsFromPointToPoint(std::span<const double> curve) {
  std::vector<double> in_order;
  for (std::size_t gap = 0; gap < curve.size(); gap += kAbscissae) {
    in_order.push_back(curve[gap]);
    const auto inner = curve.subspan(gap + kEnds, kAbscissae - kEnds);
    in_order.insert(in_order.end(), inner.begin(), inner.end());
  }
  in_order.push_back(curve[curve.size() - kAbscissae + 1]);
  return kParts * TurnsPerDistance(in_order);
}

struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  void Take(double value) {
    if (!std::isfinite(value)) return;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  double Beyond(double value) const {
    return std::isfinite(value) ? std::max(value - high, low - value) : 0;
  }
};

}  // namespace

CurveSwing GreatestSwing(ModelResiduals& residuals, std::span<const double> x,
                         std::span<const double> values) {
  CurveSwing greatest;
  if (x.size() < kEnds) return greatest;
  const std::size_t step = (x.size() - 1) / kMostGaps + 1;
  std::vector<double> abscissae;
  for (std::size_t i = 0; i + 1 < x.size(); i += step) AddGap(x, i, abscissae);
  const std::vector<double> curve = residuals.Curve(values, abscissae);

  Extent whole;
  double excursion = 0;
  for (std::size_t gap = 0; gap < curve.size(); gap += kAbscissae) {
    Extent near;
    for (std::size_t i = gap; i < gap + kEnds; ++i) near.Take(curve[i]);
    whole.Take(near.low);
    whole.Take(near.high);
    for (std::size_t i = gap + kEnds; i < gap + kAbscissae; ++i) {
      if (!(near.Beyond(curve[i]) > excursion)) continue;
      excursion = near.Beyond(curve[i]);
      greatest.from = abscissae[gap];
      greatest.to = abscissae[gap + 1];
    }
  }
  const double size = std::max(std::abs(whole.low), std::abs(whole.high));
  if (excursion > kRounding * size) greatest.share = excursion / (whole.high - whole.low);
  if (step == 1 && AreEven(x)) greatest.turns = TurnsFromPointToPoint(curve);
  return greatest;
}

bool SwingsFreely(const CurveSwing& swing) {
  return swing.share > kFree;
}

bool OutrunsPoints(const CurveSwing& swing) {
  return swing.turns > 1;
}

}  // namespace tarnwick
