#include "stream/extended_float.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "base/undefined.h"

namespace tarnwick {
namespace {

using Limits = std::numeric_limits<double>;

std::uint64_t BitsOf(double value) {
  return std::bit_cast<std::uint64_t>(value);
}

ExtendedFloat Make(unsigned top, std::uint64_t significand) {
  ExtendedFloat bytes{};
  for (std::size_t i = 0; i < 8; ++i) bytes[i] = static_cast<std::uint8_t>(significand >> (8 * i));
  bytes[8] = static_cast<std::uint8_t>(top);
  bytes[9] = static_cast<std::uint8_t>(top >> 8);
  return bytes;
}

constexpr std::uint64_t kOne = std::uint64_t{1} << 63;

TEST(ExtendedFloat, KnownBytes) {
  const struct {
    double value;
    ExtendedFloat bytes;
  } rows[] = {
      {0.0, Make(0, 0)},
      {-0.0, Make(0x8000, 0)},
      {1.0, Make(0x3FFF, kOne)},
      {-2.5, Make(0xC000, 0xA000000000000000)},
      {Limits::infinity(), Make(0x7FFF, kOne)},
      {-Limits::infinity(), Make(0xFFFF, kOne)},
      {Limits::denorm_min(), Make(0x3BCD, kOne)},
      {Limits::min(), Make(0x3C01, kOne)},
      {Limits::max(), Make(0x43FE, 0xFFFFFFFFFFFFF800)},
      {kUndefined, Make(0xFFFF, ~std::uint64_t{0})},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ExtendedFromDouble(row.value), row.bytes) << row.value;
    EXPECT_EQ(BitsOf(DoubleFromExtended(row.bytes)), BitsOf(row.value)) << row.value;
  }
}

TEST(ExtendedFloat, NarrowsOddBytes) {
  const struct {
    const char* what;
    ExtendedFloat bytes;
    double value;
  } rows[] = {
      {"a tie goes to even", Make(0x3FFF, kOne | 0x400), 1.0},
      {"a tie goes to even, upwards", Make(0x3FFF, kOne | 0xC00), 1 + 2 * Limits::epsilon()},
      {"above a tie", Make(0x3FFF, kOne | 0x401), 1 + Limits::epsilon()},
      {"rounding carries into the exponent", Make(0x3FFE, ~std::uint64_t{0}), 1.0},
      {"rounding overflows", Make(0x43FE, ~std::uint64_t{0}), Limits::infinity()},
      {"too large", Make(0xC3FF, kOne), -Limits::infinity()},
      {"half the smallest denormal", Make(0x3BCC, kOne), 0.0},
      {"more than that", Make(0x3BCC, kOne | 1), Limits::denorm_min()},
      {"far too small", Make(0x8000, 1), -0.0},
      {"a denormal rounds up to a normal", Make(0x3C00, ~std::uint64_t{0}), Limits::min()},
      {"without the integer bit", Make(0x3FFF, kOne >> 1), 0.5},
      {"zero with an exponent", Make(0x3FFF, 0), 0.0},
      {"infinity without the integer bit", Make(0x7FFF, 0), Limits::infinity()},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(BitsOf(DoubleFromExtended(row.bytes)), BitsOf(row.value)) << row.what;
  }
  EXPECT_TRUE(IsUndefined(DoubleFromExtended(Make(0x7FFF, kOne | 1))));
}

TEST(ExtendedFloat, EveryDoubleReturns) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 500'000; ++i) {
    std::uint64_t bits = random();
    if (i % 4 == 0) bits &= 0x800FFFFFFFFFFFFF;  // denormals
    // Signalling NaNs come out quiet.
    if (IsUndefined(std::bit_cast<double>(bits))) bits |= 0x0008000000000000;
    const double back = DoubleFromExtended(ExtendedFromDouble(std::bit_cast<double>(bits)));
    ASSERT_EQ(BitsOf(back), bits);
  }
}

#if defined(__x86_64__) || defined(__i386__)
TEST(ExtendedFloat, AgreesWithTheProcessor) {
  std::mt19937_64 random(13);
  for (int i = 0; i < 1'000'000; ++i) {
    // Mostly exponents in the doubles' reach and at its ends; bits near ties.
    std::uint64_t significand = random();
    if (i % 3 == 0) significand &= ~std::uint64_t{0} << (random() % 60);
    unsigned top = static_cast<unsigned>(random() & 0xFFFF);
    if (i % 8 != 0) top = (top & 0x8000) | (0x3BC0 + top % 0x900);
    const unsigned exponent = top & 0x7FFF;
    if (exponent != 0) significand |= kOne;
    if (exponent == 0x7FFF) continue;  // compared by the tables above
    const ExtendedFloat bytes = Make(top, significand);
    long double extended = 0;
    std::memcpy(&extended, bytes.data(), bytes.size());
    ASSERT_EQ(BitsOf(DoubleFromExtended(bytes)), BitsOf(static_cast<double>(extended)));
    const auto narrowed = static_cast<double>(extended);
    const auto widened = static_cast<long double>(narrowed);
    ExtendedFloat expected{};
    std::memcpy(expected.data(), &widened, expected.size());
    ASSERT_EQ(ExtendedFromDouble(narrowed), expected);
  }
}
#endif

}  // namespace
}  // namespace tarnwick
