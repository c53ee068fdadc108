// Remembers abscissae by a few bits each. Knows for sure what it has never seen, and only that; knows no points.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/split_mix.h"

namespace tarnwick {

/// 64 bits, all of them depending on all bits of x. The two zeros are one value.
inline std::uint64_t HashOfAbscissa(double x) {
  return MixBits(std::bit_cast<std::uint64_t>(x + 0.0));
}

/// A Bloom filter whose bits for one value lie in one line of the processor's cache: F. Putze, P. Sanders, J. Singler,
/// "Cache-, hash- and space-efficient Bloom filters", 2007.
class AbscissaFilter {
 public:
  /// For so many values, at most 2^37, in 11 bits each. Once it holds them it takes one other value in a hundred for known.
  explicit AbscissaFilter(std::size_t capacity) : lines_(capacity / kValuesPerLine + 1) {}

  /// Notes the value with that HashOfAbscissa; false when it was surely not noted before.
  bool Note(std::uint64_t hash) {
    std::uint64_t* const words = lines_[((hash >> 32) * lines_.size()) >> 32].words.data();
    std::uint64_t bits = (hash ^ (hash >> 29)) * 0x9E3779B97F4A7C15U;
    std::uint64_t missing = 0;
    for (int i = 0; i < kBitsPerValue; ++i) {
      std::uint64_t& word = words[(bits >> 6) & 7];
      const std::uint64_t bit = std::uint64_t{1} << (bits & 63);
      missing |= ~word & bit;
      word |= bit;
      bits >>= 9;
    }
    return missing == 0;
  }

 private:
  static constexpr std::size_t kValuesPerLine = 48;
  static constexpr int kBitsPerValue = 5;
  struct alignas(64) Line {
    std::array<std::uint64_t, 8> words{};
  };

  std::vector<Line> lines_;
};

}  // namespace tarnwick
