// A colour as files store it. Knows no drawing.
#pragma once

#include <cstdint>

namespace tarnwick {

/// 0x00BBGGRR as a signed 32-bit integer; values outside that (system colours of other writers) are kept as read.
struct Color {
  std::int32_t value = 0;  ///< black

  static constexpr Color FromRgb(int red, int green, int blue) {
    return Color{(red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16};
  }
  constexpr int Red() const { return value & 0xFF; }
  constexpr int Green() const { return value >> 8 & 0xFF; }
  constexpr int Blue() const { return value >> 16 & 0xFF; }

  bool operator==(const Color&) const = default;
};

}  // namespace tarnwick
