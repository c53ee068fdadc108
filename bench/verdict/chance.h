// Numbers by chance, the same ones on every machine. Knows numbers only.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

#include "base/split_mix.h"

namespace tarnwick::bench {

class Chance {
 public:
  explicit Chance(std::uint64_t seed) : state_(seed) {}

  /// At least 0 and below 1.
  double Uniform() { return NextSplitMix(state_); }
  double Between(double low, double high) { return low + (high - low) * Uniform(); }
  bool Happens(double probability) { return Uniform() < probability; }
  /// Of mean 0 and deviation 1 (Box and Muller, Ann. Math. Stat. 29 (1958), 610).
  double Normal() {
    const double radius = std::sqrt(-2 * std::log(1 - Uniform()));
    return radius * std::cos(2 * std::numbers::pi * Uniform());
  }

 private:
  std::uint64_t state_;
};

}  // namespace tarnwick::bench
