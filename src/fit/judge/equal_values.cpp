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
/// These tell most other curves at once.
constexpr std::size_t kFewPlaces = 8;
/// Of more parameters there are too many sets to ask.
constexpr std::size_t kMostInSets = 12;
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

  bool Agree(const std::vector<double>& values) const {
    const std::size_t few = std::min(kFewPlaces, places_.size());
    const std::span places(places_);
    return AreSameCurve(std::span(here_).first(few), residuals_.Curve(values, places.first(few))) &&
           AreSameCurve(here_, residuals_.Curve(values, places));
  }

 private:
  bool Agrees(std::size_t i, double value) const {
    std::vector<double> values = values_;
    values[i] = value;
    return Agree(values);
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

namespace {

/// Looks for the sets of one fit.
class SetSearch {
 public:
  SetSearch(ModelResiduals& residuals, std::span<const double> x, std::span<const double> values,
            std::span<const EqualValue> alone)
      : curves_(residuals, x, values),
        ranges_(residuals.Ranges()),
        values_(values.begin(), values.end()),
        free_(values.size(), true) {
    for (const EqualValue& one : alone) free_[static_cast<std::size_t>(one.parameter)] = false;
  }

  /// Two that are below 0 before one that is: alone it would leave the other there.
  std::vector<EqualSet> Run() {
    for (std::size_t i = 0; i < values_.size(); ++i)
      for (std::size_t j = i + 1; j < values_.size(); ++j) TryBoth(i, j);
    for (std::size_t i = 0; i < values_.size(); ++i)
      if (IsBelow(i)) TryWithThird(WithOther(values_, i));
    return std::move(found_);
  }

 private:
  bool IsBelow(std::size_t i) const { return free_[i] && values_[i] < 0; }

  static std::vector<double> WithOther(std::vector<double> values, std::size_t i) {
    values[i] = -values[i];
    return values;
  }

  void TryBoth(std::size_t i, std::size_t j) {
    if (!IsBelow(i) || !IsBelow(j)) return;
    const std::vector<double> both = WithOther(WithOther(values_, i), j);
    if (!Try(both)) TryWithThird(both);
  }

  /// With each other parameter's sign changed, and half a turn on.
  void TryWithThird(const std::vector<double>& changed) {
    for (std::size_t k = 0; k < values_.size(); ++k) {
      if (!free_[k] || changed[k] != values_[k]) continue;
      for (const double size : {values_[k], -values_[k]}) {
        for (const double half_turn : {0.0, kTurns[0] / 2, kTurns[1] / 2, kTurns[2] / 2}) {
          std::vector<double> other = changed;
          other[k] = size + half_turn;
          if (half_turn > 0) other[k] -= 2 * half_turn * std::round(other[k] / (2 * half_turn));
          if (other[k] != values_[k] && Try(other)) return;
        }
      }
    }
  }

  bool Try(const std::vector<double>& other) {
    for (std::size_t i = 0; i < other.size(); ++i)
      if (other[i] < ranges_[i].low || other[i] > ranges_[i].high) return false;
    if (!curves_.Agree(other)) return false;
    EqualSet set;
    for (std::size_t i = 0; i < other.size(); ++i) {
      if (other[i] == values_[i]) continue;
      set.members.push_back({static_cast<std::int32_t>(i), other[i]});
      free_[i] = false;
    }
    found_.push_back(std::move(set));
    return true;
  }

  Curves curves_;
  std::span<const ParameterRange> ranges_;
  std::vector<double> values_;
  std::vector<bool> free_;  // in no set yet
  std::vector<EqualSet> found_;
};

}  // namespace

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

std::vector<EqualSet> FindEqualSets(ModelResiduals& residuals, std::span<const double> x,
                                    std::span<const double> values,
                                    std::span<const EqualValue> alone) {
  if (x.empty() || values.size() > kMostInSets) return {};
  return SetSearch(residuals, x, values, alone).Run();
}

}  // namespace tarnwick
