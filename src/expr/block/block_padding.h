// How far arrays of block values reach beyond their last value. Knows numbers only.
#pragma once

#include <cstddef>

namespace tarnwick {

/// Every instruction set's vectors divide this many values evenly; arrays can be read and written up to a multiple of it.
inline constexpr std::size_t kBlockPadding = 8;

/// The length of an array for `count` values.
constexpr std::size_t PaddedLength(std::size_t count) {
  return (count + kBlockPadding - 1) / kBlockPadding * kBlockPadding;
}

}  // namespace tarnwick
