// Kinds of ASCII characters, whatever the locale.
#pragma once

namespace tarnwick {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace tarnwick
