#include "data/fields/unit_text.h"

#include <gtest/gtest.h>

#include <string>

#include "data/fields/known_units.h"
#include "data/fields/si_unit.h"

namespace tarnwick {
namespace {

TEST(KnownUnit, IsMadeOfKnownWordsAndSomeWord) {
  for (const char* unit : {"mV", "km/h", "kg m-3", "m/s2", "%", "1/s", "(mA)", "counts", "µm"})
    EXPECT_TRUE(IsKnownUnit(unit)) << unit;
  for (const char* text : {"", "1", "/", "1/2", "Hugo", "mV Hugo", "Hugo mV", "kpsi x"})
    EXPECT_FALSE(IsKnownUnit(text)) << text;
}

TEST(UnitText, TakesNumbersApart) {
  const struct {
    const char* text;
    double number;
    const char* unit;
  } rows[] = {
      {"12.5 mV", 12.5, "mV"},
      {"40%", 40, "%"},
      {"1.5e3Ohm", 1500, "Ohm"},
      {"5eV", 5, "eV"},
      {"5E3 V", 5000, "V"},
      {"-3 \u00B0C", -3, "\u00B0C"},
      {"\u22123\u00A0\u00B5m", -3, "\u00B5m"},
      {"+.5 deg C", 0.5, "deg C"},
      {"12,5 kg m-3", 12.5, "kg m-3"},
      {"0,125 V", 0.125, "V"},
      {"3 W/m^2", 3, "W/m^2"},
      {"5A", 5, "A"},
      {"9.8 m/s2", 9.8, "m/s2"},
      {"12dB", 12, "dB"},
      {"-$4.20", -4.2, "$"},
      {"7", 7, ""},
  };
  for (const auto& row : rows) {
    const std::optional<NumberAndUnit> split = SplitUnit(row.text);
    ASSERT_TRUE(split.has_value()) << row.text;
    EXPECT_EQ(split->number, row.number) << row.text;
    EXPECT_EQ(split->unit, row.unit) << row.text;
  }
  for (const char* text : {"",
                           "mV",
                           "$",
                           ".",
                           "9a",
                           "1f2",
                           "3E",
                           "0x1F",
                           "12:30",
                           "3/4",
                           "2nd",
                           "1h30",
                           "4ABC12",
                           "5 m2s",
                           "5 m22",
                           "12 Main Street",
                           "14 Mar 2024",
                           "14MAR2024",
                           "2024-03-14",
                           "1,234 V",
                           "1 234 V",
                           "1e999 V",
                           "5 V; 6 V",
                           "3 4",
                           "20240314T120506",
                           "$4 V"}) {
    EXPECT_FALSE(SplitUnit(text).has_value()) << text;
  }
  for (const char letter : {'1', 'm', '\xC2'}) {
    EXPECT_FALSE(SplitUnit("1" + std::string(1 << 20, letter) + "m")) << letter;
  }
}

TEST(UnitText, ReadsHowUncertainNumbersAre) {
  const struct {
    const char* text;
    double error;  // 0: none that can be told
  } rows[] = {
      {"12.5 \u00B1 0.2", 0.2}, {"12.5+/-0.25 mV", 0.25}, {"-12.5 +- 2", 2}, {"40 \u00B1 5%", 2},
      {"1.25(5)", 0.05},        {"120(10)", 10},          {"1.2(0.3)", 0.3}, {"1.5e3(2)", 200},
      {"12,50(25)", 0.25},      {"45 (30)", 0},           {"12.5 mV", 0},    {"7", 0},
  };
  for (const auto& row : rows) {
    const std::optional<NumberAndUnit> split = SplitUnit(row.text);
    ASSERT_TRUE(split.has_value()) << row.text;
    EXPECT_DOUBLE_EQ(split->uncertainty.value_or(0), row.error) << row.text;
  }
}

TEST(UnitText, BringsUnitsToTheOneWithoutPrefix) {
  const struct {
    const char* unit;
    double factor;  // 0: none
    const char* base;
  } rows[] = {
      {"mV", 1e-3, "V"},      {"kHz", 1e3, "Hz"}, {"\u00B5s", 1e-6, "s"},
      {"\u03BCA", 1e-6, "A"}, {"m", 1, "m"},      {"mm", 1e-3, "m"},
      {"fs", 1e-15, "s"},     {"pF", 1e-12, "F"}, {"nA", 1e-9, "A"},
      {"uV", 1e-6, "V"},      {"cm", 1e-2, "m"},  {"KHz", 1e3, "Hz"},
      {"MPa", 1e6, "Pa"},     {"GHz", 1e9, "Hz"}, {"TOhm", 1e12, "Ohm"},
      {"Pa", 1, "Pa"},        {"T", 1, "T"},      {"k\u03A9", 1e3, "\u03A9"},
      {"min", 0, ""},         {"m/s", 0, ""},     {"%", 0, ""},
  };
  for (const auto& row : rows) {
    const std::optional<PrefixedUnit> unit = WithoutPrefix(row.unit);
    EXPECT_EQ(unit ? unit->factor : 0, row.factor) << row.unit;
    EXPECT_EQ(unit ? unit->base : "", row.base) << row.unit;
  }
}

}  // namespace
}  // namespace tarnwick
