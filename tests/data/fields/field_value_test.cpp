#include "data/fields/field_value.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/day_number.h"

namespace tarnwick {
namespace {

double Day(int year, int month, int day, int hour = 0) {
  return JoinDay({year, month, day, hour, 0, 0, 0});
}

TEST(ValueOfField, ReadsByFormat) {
  struct Row {
    const char* text;
    ColumnFormat format;
    std::optional<double> value;
  };
  using enum ColumnFormat;
  const Row rows[] = {
      {"1.5", Automatic, 1.5},
      {" 1,5 ", Automatic, 1.5},
      {"2024-03-04", Automatic, Day(2024, 3, 4)},
      {"03/04/2024", Automatic, Day(2024, 3, 4)},
      {"12:00", Automatic, 0.5},
      {"12 mg", Automatic, std::nullopt},
      {"", Automatic, std::nullopt},
      {"NaN", Automatic, std::nullopt},
      {"inf", Number, std::nullopt},
      {"1e999", Number, std::nullopt},
      {"2024-03-04", Number, std::nullopt},
      {"1.234.567,5", DecimalComma, 1234567.5},
      {"-1.234", DecimalComma, -1234},
      {"1.5", DecimalComma, std::nullopt},
      {"1234.567", DecimalComma, std::nullopt},
      {"1,5.000", DecimalComma, std::nullopt},
      {"1.2345", DecimalComma, std::nullopt},
      {"3/4/2024 12:00", DateDayFirst, Day(2024, 4, 3, 12)},
      {"3-4-2024", DateDayFirst, Day(2024, 4, 3)},
      {"3-4-2024", DateMonthFirst, Day(2024, 3, 4)},
      {"03:04:2024", DateDayFirst, Day(2024, 4, 3)},
      {"03:04:2024", DateMonthFirst, Day(2024, 3, 4)},
      {"2024-03-04T12:00:00.0/2024-03-04T13:00:00.0", DateTime, Day(2024, 3, 4, 12)},
      {"2024-03-04T12:00Z--2024-03-04T13:00Z", DateTime, Day(2024, 3, 4, 12)},
      {"2024-03-04/", DateTime, std::nullopt},
      {"2024-03-04T12:00/13:00", DateTime, std::nullopt},
      {"13/04/2024", DateMonthFirst, std::nullopt},
      {"45000", DateTime, std::nullopt},
      {"1.5", static_cast<ColumnFormat>(99), 1.5},
      {"1,234.5", Automatic, std::nullopt},
      {"- 5.2", Automatic, -5.2},
      {"+ 5.2", Number, 5.2},
      {"- -5", Number, std::nullopt},
      {"-1,234,567.5", GroupedThousands, -1234567.5},
      {"2,000", GroupedThousands, 2000},
      {"1,23", GroupedThousands, std::nullopt},
      {"-1.5D+03", Automatic, -1500},
      {"1d", Number, std::nullopt},
      {"\u22121,5e\u22122", DecimalComma, -0.015},
      {"1'234'567.5", Number, 1234567.5},
      {"12'34", Number, std::nullopt},
      {"1234'567", Number, std::nullopt},
      {"1\u00A0234,5", DecimalComma, 1234.5},
      {"1\xA0"
       "234",
       Automatic, 1234},
      {"12 345", Automatic, std::nullopt},
      {"1 234 567.5", GroupedThousands, 1234567.5},
      {"-1 234,56", DecimalComma, -1234.56},
      {"1 2345", GroupedThousands, std::nullopt},
      {"1  234", DecimalComma, std::nullopt},
      {"12 34", GroupedThousands, std::nullopt},
      {"20240304", Automatic, 20240304},
      {"20240304", DateTime, Day(2024, 3, 4)},
      {"2024030406", DateDayFirst, Day(2024, 3, 4, 6)},
      {"20240230", DateMonthFirst, std::nullopt},
      {"Mar 4, 2024", Automatic, Day(2024, 3, 4)},
      {"2024-03-04T06:00:00-06:00", Automatic, Day(2024, 3, 4, 12)},
      {"1709532000", UnixSeconds, Day(2024, 3, 4, 6)},
      {"1709532000000", UnixMilliseconds, Day(2024, 3, 4, 6)},
      {"1e300", UnixSeconds, std::nullopt},
      {"12.5 mV", NumberWithUnit, 12.5},
      {"12.5 mV", Number, std::nullopt},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ValueOfField(row.text, row.format), row.value)
        << row.text << " by format " << static_cast<int>(row.format);
  }
}

}  // namespace
}  // namespace tarnwick
