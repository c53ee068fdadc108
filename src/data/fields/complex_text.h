// Complex numbers as programs write them. Knows texts only.
#pragma once

#include <string_view>

namespace tarnwick {

/// "1.2+3.4j", "(1.2-3.4i)", "1.2 + 3.4i": two numbers, the second with a sign and the imaginary unit behind it.
bool IsComplexNumber(std::string_view text);

}  // namespace tarnwick
