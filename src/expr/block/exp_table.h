// Powers of two between 1 and 2, as the vector functions take them. Knows numbers only.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace tarnwick {

inline constexpr std::size_t kExpTableSize = 128;

/// 2^(j/128) for each j, its bits lessened by j 2^45: with k 2^45 added they are those of 2^(k/128), where j = k mod 128.
constexpr std::array<double, kExpTableSize> MakeExpTable() {
  std::array<double, kExpTableSize> table = {};
  for (std::size_t j = 0; j < kExpTableSize; ++j) {
    const long double exponent =
        std::numbers::ln2_v<long double> * static_cast<long double>(j) / kExpTableSize;
    // The series of e^x, the smallest terms first.
    long double power = 1;
    for (int n = 26; n > 0; --n) power = 1 + power * exponent / n;
    const auto bits = std::bit_cast<std::int64_t>(static_cast<double>(power));
    table[j] = std::bit_cast<double>(bits - (static_cast<std::int64_t>(j) << 45));
  }
  return table;
}

inline constexpr std::array<double, kExpTableSize> kExpTable = MakeExpTable();

}  // namespace tarnwick
