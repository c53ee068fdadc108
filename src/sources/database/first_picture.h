// What is read of a large table before it is shown first.
#pragma once

#include <cstdint>

namespace tarnwick {

enum class FirstPicture : std::uint8_t {
  Whole,  ///< every row, however long that takes
  Coarse  ///< where a table is large, a few rows from all over it, for who reads every row behind it
};

}  // namespace tarnwick
