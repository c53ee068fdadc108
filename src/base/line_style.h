// The pen styles that lines of a graph may have, with the numbers under which they are stored.
#pragma once

#include <cstdint>

namespace tarnwick {

enum class LineStyle : std::int32_t {
  Solid = 0,
  Dash = 1,
  Dot = 2,
  DashDot = 3,
  DashDotDot = 4,
  None = 5
};

}  // namespace tarnwick
