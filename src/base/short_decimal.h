// Decimal numbers as tables of measurements hold them, read in a few steps without a loop over their digits. Knows no exponents.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tarnwick {

/// What a reading of digits came to: their value and how many there were.
struct DigitRun {
  std::uint64_t value = 0;
  int count = 0;
};

/// The digits at `at`, at most eight; eight bytes must be readable there. Eight at a time as in Lemire, "Number Parsing at a
/// Gigabyte per Second", Software: Practice and Experience 51 (2021), fewer moved up so that zeros stand before them.
inline DigitRun ReadDigits(const char* at) {
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  bytes ^= 0x3030303030303030U;
  // The high bit of every byte that is no digit, from the lowest such byte on.
  const std::uint64_t others = (bytes | (bytes + 0x7676767676767676U)) & 0x8080808080808080U;
  const int count = std::countr_zero(others) / 8;
  if (count == 0) return {};
  bytes <<= 8 * (8 - count);
  bytes = bytes * 10 + (bytes >> 8);
  bytes = ((bytes & 0x000000FF000000FFU) * 0x000F424000000064U +
           ((bytes >> 16) & 0x000000FF000000FFU) * 0x0000271000000001U) >>
          32;
  return {bytes, count};
}

/// Powers of ten. Here, where they are laid down once: within a function every call would make them anew on the stack.
inline constexpr std::array<double, 9> kPowersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
inline constexpr std::array<std::uint64_t, 9> kWholePowersOfTen{
    1, 10, 100, 1000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

/// Reads "-12.345" or "12": digits, perhaps `point` and digits, at most eight of each and at most fifteen together, so that the
/// quotient of two exact doubles is the nearest double. Answers where the number ends, or null when it is written in any
/// other way or fewer than twenty bytes lie between `at` and `end`.
inline const char* ReadShortDecimal(const char* at, const char* end, char point, double& value) {
  constexpr int kMostBytes = 1 + 8 + 1 + 8 + 2;
  if (end - at < kMostBytes) return nullptr;
  const bool negative = *at == '-';
  at += negative ? 1 : 0;
  DigitRun digits = ReadDigits(at);
  at += digits.count;
  if (digits.count == 0) return nullptr;
  double divisor = 1;
  if (*at == point) {
    const DigitRun part = ReadDigits(++at);
    at += part.count;
    if (part.count == 0 || digits.count + part.count > 15) return nullptr;
    const auto power = static_cast<std::size_t>(part.count);
    digits.value = digits.value * kWholePowersOfTen[power] + part.value;
    divisor = kPowersOfTen[power];
  }
  if (*at == 'e' || *at == 'E' || (*at >= '0' && *at <= '9')) return nullptr;
  // Signs come in no order that a processor could foresee: the bit is set without a branch.
  const double size = static_cast<double>(static_cast<std::int64_t>(digits.value)) / divisor;
  value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(size) |
                                static_cast<std::uint64_t>(negative) << 63U);
  return at;
}

}  // namespace tarnwick
