#include "fit/judge/curve_turns.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tarnwick {
namespace {

/// Part of the curve's range.
constexpr double kLeastWayBack = 0.02;
/// Fewer turns are a peak or two.
constexpr std::int64_t kFewestTurns = 4;

/// Follows a curve from extreme to extreme.
class TurnCounter {
 public:
  TurnCounter(double first, double least) : least_(least), extreme_(first) {}

  void Take(double value) {
    ++place_;
    if (heading_ == Heading::Unknown) {
      if (std::abs(value - extreme_) > least_)
        Head(value > extreme_ ? Heading::Up : Heading::Down, value);
    } else if (heading_ == Heading::Up ? value > extreme_ : value < extreme_) {
      extreme_ = value;
      extreme_place_ = place_;
    } else if (std::abs(value - extreme_) > least_) {
      if (turns_++ == 0) first_ = extreme_place_;
      last_ = extreme_place_;
      Head(heading_ == Heading::Up ? Heading::Down : Heading::Up, value);
    }
  }
  double PerDistance() const {
    return turns_ < kFewestTurns
               ? 0
               : static_cast<double>(turns_ - 1) / static_cast<double>(last_ - first_);
  }

 private:
  enum class Heading { Unknown, Up, Down };

  void Head(Heading heading, double value) {
    heading_ = heading;
    extreme_ = value;
    extreme_place_ = place_;
  }

  double least_;
  double extreme_;
  Heading heading_ = Heading::Unknown;
  std::int64_t place_ = 0;
  std::int64_t extreme_place_ = 0;
  std::int64_t turns_ = 0;
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
};

}  // namespace

double TurnsPerDistance(std::span<const double> curve) {
  const auto has_value = [](double value) { return std::isfinite(value); };
  if (curve.empty() || !std::ranges::all_of(curve, has_value)) return 0;
  const auto [low, high] = std::ranges::minmax(curve);
  TurnCounter counter(curve.front(), kLeastWayBack * (high - low));
  for (const double value : curve.subspan(1)) counter.Take(value);
  return counter.PerDistance();
}

}  // namespace tarnwick
