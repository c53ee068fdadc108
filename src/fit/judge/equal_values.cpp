#include "fit/judge/equal_values.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tarnwick {
namespace {

/// A phase of at most this part of the other is the simpler one.
constexpr double kSimpler = 0.5;
/// So many points tell two curves apart, and as many places between them, at this part of the way.
constexpr std::size_t kMostPoints = 256;
constexpr double kBetween = 0.37;
/// Of the greatest value: a difference by rounding.
constexpr double kRounding = 1e-9;

std::vector<double> Places(std::span<const double> x) {
  const std::size_t step = x.size() / kMostPoints + 1;
  std::vector<double> places;
  for (std::size_t i = 0; i < x.size(); i += step) {
    places.push_back(x[i]);
    if (i + 1 < x.size()) places.push_back(std::lerp(x[i], x[i + 1], kBetween));
  }
  return places;
}

class Curves {
 public:
  Curves(ModelResiduals& residuals, std::span<const double> x, std::span<const double> values)
      : residuals_(residuals),
        places_(Places(x)),
        values_(values.begin(), values.end()),
        here_(residuals.Curve(values_, places_)) {}

  /// The parameter's other value gives the same curve, which no value does that it has no part in.
  bool AreSame(std::size_t i, double value) const {
    return Agrees(i, value) && !Agrees(i, 1.1 * values_[i] + 0.1);
  }

 private:
  bool Agrees(std::size_t i, double value) const {
    std::vector<double> values = values_;
    values[i] = value;
    return AreSameCurve(here_, residuals_.Curve(values, places_));
  }

  ModelResiduals& residuals_;
  std::vector<double> places_;
  std::vector<double> values_;
  std::vector<double> here_;
};

}  // namespace

bool AreSameCurve(std::span<const double> one, std::span<const double> other) {
  double greatest = 0;
  double apart = 0;
  for (std::size_t i = 0; i < one.size(); ++i) {
    if (std::isfinite(one[i]) != std::isfinite(other[i])) return false;
    if (!std::isfinite(one[i])) continue;
    greatest = std::max(greatest, std::abs(one[i]));
    apart = std::max(apart, std::abs(one[i] - other[i]));
  }
  return apart <= kRounding * greatest;
}

std::vector<EqualValue> FindEqualValues(ModelResiduals& residuals, std::span<const double> x,
                                        std::span<const double> values) {
  std::vector<EqualValue> found;
  if (x.empty()) return found;
  const Curves curves(residuals, x, values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const ParameterRange& range = residuals.Ranges()[i];
    const auto take = [&](double value, double turn) {
      if (value < range.low || value > range.high || !curves.AreSame(i, value)) return false;
      found.push_back({static_cast<std::int32_t>(i), value, turn});
      return true;
    };
    if (values[i] < 0 && take(-values[i], 0)) continue;
    for (const double turn : kTurns) {
      const double rest = values[i] - turn * std::round(values[i] / turn);
      if (std::abs(rest) < kSimpler * std::abs(values[i]) && take(rest, turn)) break;
    }
  }
  return found;
}

}  // namespace tarnwick
