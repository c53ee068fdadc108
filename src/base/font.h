// A font as files store it. Knows no drawing.
#pragma once

#include <cstdint>
#include <string>

#include "base/color.h"

namespace tarnwick {

struct Font {
  std::string name = "Arial";
  std::int32_t size = 8;  ///< points
  Color color;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;

  bool operator==(const Font&) const = default;
};

}  // namespace tarnwick
