// Smallest and largest value of a run of ordinates, at the speed of memory. Knows numbers only.
#pragma once

#include <cstddef>
#include <limits>
#include <span>

#include "base/double_pair.h"

namespace tarnwick {

/// Smallest and largest stored Y of a run of points, with NaN left out (`min > max` when nothing was left).
struct YExtremes {
  double min = 0;
  double max = 0;
  bool gaps = false;  ///< some Y is NaN

  void Widen(const YExtremes& other) {
    min = other.min < min ? other.min : min;
    max = other.max > max ? other.max : max;
    gaps |= other.gaps;
  }
};

YExtremes ExtremesOf(std::span<const double> values);

/// The smallest of `lows` and the largest of `highs`, of both as many, and of `values`, where no NaN is. Nothing at all gives
/// infinities.
class PlainExtremes {
 public:
  void Take(const double* lows, const double* highs, std::size_t count) {
    for (; count >= 2 * kPair; count -= 2 * kPair, lows += 2 * kPair, highs += 2 * kPair) {
      Take(LoadPair(lows), LoadPair(highs));
      TakeOther(LoadPair(lows + kPair), LoadPair(highs + kPair));
    }
    if (count >= kPair) {
      Take(LoadPair(lows), LoadPair(highs));
      count -= kPair, lows += kPair, highs += kPair;
    }
    if (count != 0) Take(DoublePair{*lows, *lows}, DoublePair{*highs, *highs});
  }
  void Take(const double* values, std::size_t count) { Take(values, values, count); }

  YExtremes Result() const {
    const DoublePair min = other_min_ < min_ ? other_min_ : min_;
    const DoublePair max = other_max_ > max_ ? other_max_ : max_;
    return {min[1] < min[0] ? min[1] : min[0], max[1] > max[0] ? max[1] : max[0], false};
  }

 private:
  static constexpr std::size_t kPair = 2;
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  void Take(DoublePair lows, DoublePair highs) {
    min_ = lows < min_ ? lows : min_;
    max_ = highs > max_ ? highs : max_;
  }
  void TakeOther(DoublePair lows, DoublePair highs) {
    other_min_ = lows < other_min_ ? lows : other_min_;
    other_max_ = highs > other_max_ ? highs : other_max_;
  }

  DoublePair min_{kInfinity, kInfinity}, other_min_ = min_;
  DoublePair max_{-kInfinity, -kInfinity}, other_max_ = max_;
};

}  // namespace tarnwick
