// Numbers that look like chance, and the mixing of bits behind them: SplitMix64 (G. Steele, D. Lea, C. Flood, "Fast splittable
// pseudorandom number generators", 2014). Knows bits only.
#pragma once

#include <cstdint>

namespace tarnwick {

/// 64 bits, all of them depending on all of the bits given: the finishing step.
inline std::uint64_t MixBits(std::uint64_t bits) {
  bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
  return bits ^ (bits >> 31);
}

/// The next number of the sequence, at least 0 and below 1; the state goes on with it.
inline double NextSplitMix(std::uint64_t& state) {
  state += 0x9E3779B97F4A7C15U;
  return static_cast<double>(MixBits(state) >> 11) * 0x1p-53;
}

}  // namespace tarnwick
