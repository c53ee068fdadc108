#include "stream/extended_float.h"

#include <bit>
#include <cstddef>

namespace tarnwick {
namespace {

constexpr int kExtendedBias = 16383;
constexpr int kDoubleBias = 1023;
constexpr std::uint64_t kExtendedMaxExponent = 0x7FFF;
constexpr std::uint64_t kDoubleMaxExponent = 0x7FF;
constexpr int kFractionBits = 52;  // of a double
constexpr int kNarrowedBits = 11;  // of the 64-bit significand that a normal double lacks
constexpr std::uint64_t kFractionMask = (std::uint64_t{1} << kFractionBits) - 1;
constexpr std::uint64_t kIntegerBit = std::uint64_t{1} << 63;
constexpr std::uint64_t kQuietBit = std::uint64_t{1} << (kFractionBits - 1);

ExtendedFloat Pack(std::uint64_t sign, std::uint64_t exponent, std::uint64_t significand) {
  ExtendedFloat bytes{};
  for (std::size_t i = 0; i < 8; ++i) bytes[i] = static_cast<std::uint8_t>(significand >> (8 * i));
  const std::uint64_t top = sign << 15 | exponent;
  bytes[8] = static_cast<std::uint8_t>(top);
  bytes[9] = static_cast<std::uint8_t>(top >> 8);
  return bytes;
}

// value / 2^shift to the nearest integer, ties to even.
std::uint64_t ShiftRounded(std::uint64_t value, int shift) {
  if (shift <= 0) return value;
  if (shift > 64) return 0;
  if (shift == 64) return value > kIntegerBit ? 1 : 0;
  const std::uint64_t rest = value & ((std::uint64_t{1} << shift) - 1);
  const std::uint64_t half = std::uint64_t{1} << (shift - 1);
  const std::uint64_t quotient = value >> shift;
  const bool up = rest > half || (rest == half && (quotient & 1) != 0);
  return quotient + (up ? 1 : 0);
}

// The bits of infinity or, with any fraction, of a quiet NaN; without the sign.
std::uint64_t NarrowedSpecial(std::uint64_t significand) {
  const std::uint64_t infinity = kDoubleMaxExponent << kFractionBits;
  const std::uint64_t fraction = significand & ~kIntegerBit;
  if (fraction == 0) return infinity;
  return infinity | kQuietBit | fraction >> kNarrowedBits;
}

// The bits of the nearest double of a non-zero significand times 2^(exponent - bias - 63); without the sign.
std::uint64_t NarrowedFinite(int exponent, std::uint64_t significand) {
  const int leading = std::countl_zero(significand);
  significand <<= leading;
  const int biased = (exponent == 0 ? 1 : exponent) - leading - kExtendedBias + kDoubleBias;
  if (biased >= static_cast<int>(kDoubleMaxExponent)) return kDoubleMaxExponent << kFractionBits;
  if (biased <= 0) return ShiftRounded(significand, kNarrowedBits + 1 - biased);
  // The leading bit adds one to the exponent; a carry out of the rounding runs on into it, up to infinity.
  return (static_cast<std::uint64_t>(biased - 1) << kFractionBits) +
         ShiftRounded(significand, kNarrowedBits);
}

}  // namespace

ExtendedFloat ExtendedFromDouble(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::uint64_t sign = bits >> 63;
  const std::uint64_t exponent = bits >> kFractionBits & kDoubleMaxExponent;
  const std::uint64_t fraction = bits & kFractionMask;
  if (bits == ~std::uint64_t{0}) return Pack(1, kExtendedMaxExponent, ~std::uint64_t{0});
  if (exponent == kDoubleMaxExponent) {
    return Pack(sign, kExtendedMaxExponent, kIntegerBit | fraction << kNarrowedBits);
  }
  if (exponent != 0) {
    return Pack(sign, exponent - kDoubleBias + kExtendedBias,
                kIntegerBit | fraction << kNarrowedBits);
  }
  if (fraction == 0) return Pack(sign, 0, 0);
  const int leading = std::countl_zero(fraction);
  const int shifted = kExtendedBias - kDoubleBias + 1 - (leading - kNarrowedBits);
  return Pack(sign, static_cast<std::uint64_t>(shifted), fraction << leading);
}

double DoubleFromExtended(std::span<const std::uint8_t, 10> bytes) {
  std::uint64_t significand = 0;
  for (std::size_t i = 0; i < 8; ++i) significand |= std::uint64_t{bytes[i]} << (8 * i);
  const std::uint64_t top = std::uint64_t{bytes[8]} | std::uint64_t{bytes[9]} << 8;
  const std::uint64_t exponent = top & kExtendedMaxExponent;
  std::uint64_t bits = 0;
  if (exponent == kExtendedMaxExponent) {
    bits = NarrowedSpecial(significand);
  } else if (significand != 0) {
    bits = NarrowedFinite(static_cast<int>(exponent), significand);
  }
  return std::bit_cast<double>(bits | top >> 15 << 63);
}

}  // namespace tarnwick
