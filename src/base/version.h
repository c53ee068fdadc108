// The program's version, in one place.
#pragma once

#include <string_view>

namespace tarnwick {

inline constexpr std::string_view kVersion = "0.1.0";

}  // namespace tarnwick
