// Doubles as 80-bit extended floats (x87 layout: 64-bit significand with explicit integer bit, then sign and 15-bit
// exponent, little-endian), made from integers so that every machine agrees. Knows no stream.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tarnwick {

using ExtendedFloat = std::array<std::uint8_t, 10>;

/// The same value in extended precision, exactly. The undefined value (all bits set) gives ten bytes FF, other NaNs
/// keep their sign and payload.
ExtendedFloat ExtendedFromDouble(double value);

/// The nearest double, ties to even: too large becomes an infinity, too small a denormal or zero. NaNs keep sign and
/// the payload's upper bits and come out quiet. Significands without their integer bit (which arithmetic refuses) count by
/// their plain value; infinities without it are infinities.
double DoubleFromExtended(std::span<const std::uint8_t, 10> bytes);

}  // namespace tarnwick
