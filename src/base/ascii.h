// Kinds of ASCII characters, whatever the locale.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tarnwick {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// At least one digit, and nothing else; with `count`, so many.
constexpr bool AreDigits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, IsDigit);
}
constexpr bool AreDigits(std::string_view text, std::size_t count) {
  return text.size() == count && AreDigits(text);
}

}  // namespace tarnwick
