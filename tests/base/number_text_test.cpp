#include "base/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "base/short_decimal.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, WritesGeneralAndShortestForms) {
  const struct {
    double value;
    int digits;
    const char* general;
    const char* shortest;
  } rows[] = {
      {0, 15, "0", "0"},
      {-0.0, 15, "0", "-0"},
      {1, 15, "1", "1"},
      {-2.5, 15, "-2.5", "-2.5"},
      {0.1, 15, "0.1", "0.1"},
      {0.1 + 0.2, 15, "0.3", "0.30000000000000004"},
      {1e-5, 15, "0.00001", "0.00001"},
      {9.5e-6, 15, "9.5E-6", "9.5E-6"},
      {3e-8, 15, "3E-8", "3E-8"},
      {1.5e20, 15, "1.5E20", "1.5E20"},
      {100000, 15, "100000", "100000"},
      {1e15, 15, "1E15", "1E15"},
      {999999999999999, 15, "999999999999999", "999999999999999"},
      {9999999999999998, 15, "1E16", "9.999999999999998E15"},
      {123456, 4, "1.235E5", "123456"},
      {99995, 4, "1E5", "99995"},
      {-1234, 4, "-1234", "-1234"},
      {5e-324, 15, "4.94065645841247E-324", "5E-324"},
      {kUndefined, 15, "NaN", "NaN"},
      {kInfinity, 15, "INF", "INF"},
      {-kInfinity, 15, "-INF", "-INF"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(GeneralText(row.value, row.digits), row.general);
    EXPECT_EQ(ShortestText(row.value), row.shortest);
  }
}

TEST(NumberText, ShortestReadsBackAsTheSameBits) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 200'000; ++i) {
    const auto value = std::bit_cast<double>(random());
    const auto read = ParseNumber(ShortestText(value));
    ASSERT_TRUE(read.has_value()) << ShortestText(value);
    if (IsUndefined(value)) {
      ASSERT_EQ(std::bit_cast<std::uint64_t>(*read), ~std::uint64_t{0});
    } else {
      ASSERT_EQ(std::bit_cast<std::uint64_t>(*read), std::bit_cast<std::uint64_t>(value));
    }
  }
}

TEST(NumberText, WritesFixedForm) {
  EXPECT_EQ(FixedText(1.005, 2), "1.00");
  EXPECT_EQ(FixedText(2.5, 0), "2");
  EXPECT_EQ(FixedText(-0.004, 2), "0.00");
  EXPECT_EQ(FixedText(-12.345, 1), "-12.3");
  EXPECT_EQ(FixedText(1e300, 100).size(), 402U);
  EXPECT_EQ(FixedText(kUndefined, 2), "NaN");
}

TEST(NumberText, ParsesWholeNumbersOnly) {
  const struct {
    const char* text;
    double value;
  } numbers[] = {
      {"12", 12},          {"  -1.5\t", -1.5},  {"+3", 3},     {"1,25", 1.25},
      {"1,5e-3", .0015},   {".5", .5},          {"5.", 5},     {"1E5", 1e5},
      {"1e999", HUGE_VAL}, {"-inf", -HUGE_VAL}, {"1e-999", 0}, {"Infinity", HUGE_VAL},
  };
  for (const auto& row : numbers) {
    const auto read = ParseNumber(row.text);
    ASSERT_TRUE(read.has_value()) << row.text;
    EXPECT_EQ(*read, row.value) << row.text;
  }
  for (const char* text : {"", " ", "-", "+-3", "--3", "1 2", "1.2.3", "1,234.5", "1,2,3", "12x",
                           "0x10", ".", ",", "e5", "nan(1)", "in", "1e", "1\n"}) {
    EXPECT_FALSE(ParseNumber(text).has_value()) << text;
  }
}

TEST(NumberText, ShortDecimalsReadAsAnyReaderReadsThem) {
  std::mt19937_64 random(7);
  const std::string_view letters = "0123456789012345678901234567890123456789.,-+eE \t\nx";
  int read = 0;
  for (int run = 0; run < 300'000; ++run) {
    std::string text;
    for (auto length = random() % 22; length > 0; --length)
      text += letters[random() % letters.size()];
    // the second text is written as numbers mostly are
    if (run % 2 == 0)
      text = FixedText(
          std::ldexp(static_cast<double>(random() >> 12), -static_cast<int>(random() % 50)),
          static_cast<int>(random() % 9));
    if (run % 6 == 0) text.insert(0, "-");
    const std::size_t number = text.size();
    text += std::string(20, ' ');
    double value = 0;
    const char* const stop = ReadShortDecimal(text.data(), text.data() + text.size(), '.', value);
    if (stop == nullptr) continue;
    ++read;
    const auto length = static_cast<std::size_t>(stop - text.data());
    const auto expected = ParseNumber(std::string_view(text).substr(0, length));
    ASSERT_TRUE(expected) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(*expected), std::bit_cast<std::uint64_t>(value)) << text;
    EXPECT_TRUE(run % 2 == 1 || length == number) << text;
  }
  EXPECT_GT(read, 100'000);
}

TEST(NumberText, ParsesIntegers) {
  EXPECT_EQ(ParseInteger(" -2147483648 "), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ParseInteger("+7"), 7);
  for (const char* text : {"", "2147483648", "1.0", "+-1", "1 2", "0x1"}) {
    EXPECT_FALSE(ParseInteger(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace tarnwick
