// The value "undefined" of the whole program: the NaN with all bits set.
#pragma once

#include <bit>
#include <cstdint>

namespace tarnwick {

/// Stored and computed wherever a value does not exist. Never compare with it: ask IsUndefined.
inline constexpr double kUndefined = std::bit_cast<double>(~std::uint64_t{0});

/// True for every NaN, whatever its bits.
constexpr bool IsUndefined(double value) {
  return value != value;
}

}  // namespace tarnwick
