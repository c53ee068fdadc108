// The calendar autoscale, row by row of its table.
#include "graph/calendar_scale.h"

#include <gtest/gtest.h>

#include <string>

#include "base/day_number.h"

namespace tarnwick {
namespace {

std::string Text(double day) {
  return FormatDay(day, "yyyy-mm-dd hh:nn:ss");
}

TEST(FitCalendarRange, RoundsBothEndsToTheUnit) {
  using enum DateTickType;
  struct Row {
    DateTickType type;
    const char *o_min, *o_max, *min, *max;
  };
  constexpr Row kRows[] = {
      {Minute, "2024-03-01 10:05:20", "2024-03-01 10:09:01", "2024-03-01 10:05:00",
       "2024-03-01 10:10:00"},
      {Minute, "2024-03-01 10:05:00", "2024-03-01 10:09:00", "2024-03-01 10:05:00",
       "2024-03-01 10:09:00"},
      {Minute, "2024-03-01 23:58:30", "2024-03-01 23:59:30", "2024-03-01 23:58:00",
       "2024-03-02 00:00:00"},
      {FiveMinutes, "2024-03-01 10:09:59", "2024-03-01 10:20:00", "2024-03-01 10:05:00",
       "2024-03-01 10:20:00"},
      {FiveMinutes, "2024-03-01 10:05:00", "2024-03-01 10:20:01", "2024-03-01 10:05:00",
       "2024-03-01 10:25:00"},
      {FiveMinutes, "2024-03-01 10:05:00", "2024-03-01 10:57:00", "2024-03-01 10:05:00",
       "2024-03-01 11:00:00"},
      {HalfHour, "2024-03-01 10:29:59", "2024-03-01 12:00:00", "2024-03-01 10:00:00",
       "2024-03-01 12:00:00"},
      {HalfHour, "2024-03-01 10:30:00", "2024-03-01 12:00:01", "2024-03-01 10:30:00",
       "2024-03-01 12:30:00"},
      {HalfHour, "2024-03-01 10:45:00", "2024-03-01 12:30:00", "2024-03-01 10:30:00",
       "2024-03-01 13:00:00"},
      {Hour, "2024-03-01 10:45:00", "2024-03-01 12:00:00", "2024-03-01 10:00:00",
       "2024-03-01 12:00:00"},
      {Hour, "2024-03-01 10:45:00", "2024-03-01 23:00:01", "2024-03-01 10:00:00",
       "2024-03-02 00:00:00"},
      {Day, "2024-02-28 10:45:00", "2024-02-29 00:00:01", "2024-02-28 00:00:00",
       "2024-03-01 00:00:00"},
      {Day, "2024-02-28 00:00:00", "2024-03-01 00:00:00", "2024-02-28 00:00:00",
       "2024-03-01 00:00:00"},
      // 5 March 2024 is a Tuesday: the upper end is counted from it, not from the Thursday 21 March.
      {Week, "2024-03-05 12:00:00", "2024-03-21 12:00:00", "2024-03-03 00:00:00",
       "2024-03-26 00:00:00"},
      {Week, "2024-03-03 00:00:00", "2024-03-05 00:00:00", "2024-03-03 00:00:00",
       "2024-03-12 00:00:00"},
      {Month, "2024-01-31 12:00:00", "2024-03-01 00:00:00", "2024-01-01 00:00:00",
       "2024-03-01 00:00:00"},
      {Month, "2024-01-01 00:00:00", "2024-12-01 00:00:01", "2024-01-01 00:00:00",
       "2025-01-01 00:00:00"},
      {TwoMonths, "2024-02-10 00:00:00", "2024-03-01 00:00:00", "2024-01-01 00:00:00",
       "2024-03-01 00:00:00"},
      {TwoMonths, "2024-03-10 00:00:00", "2024-11-02 00:00:00", "2024-03-01 00:00:00",
       "2025-01-01 00:00:00"},
      {Quarter, "2024-03-10 00:00:00", "2024-04-01 00:00:00", "2024-01-01 00:00:00",
       "2024-04-01 00:00:00"},
      {Quarter, "2024-06-10 00:00:00", "2024-10-02 00:00:00", "2024-04-01 00:00:00",
       "2025-01-01 00:00:00"},
      {Year, "2022-06-10 00:00:00", "2024-01-01 00:00:00", "2022-01-01 00:00:00",
       "2024-01-01 00:00:00"},
      {Year, "2022-06-10 00:00:00", "2024-01-01 00:00:01", "2022-01-01 00:00:00",
       "2025-01-01 00:00:00"},
      {Decade, "1982-06-10 00:00:00", "1999-06-01 00:00:00", "1980-01-01 00:00:00",
       "2000-01-01 00:00:00"},
      {Decade, "1982-06-10 00:00:00", "1995-06-01 00:00:00", "1980-01-01 00:00:00",
       "1990-01-01 00:00:00"},
      {Decade, "1982-06-10 00:00:00", "1984-06-01 00:00:00", "1980-01-01 00:00:00",
       "1990-01-01 00:00:00"},
      {Century, "1982-06-10 00:00:00", "2100-01-01 00:00:00", "1900-01-01 00:00:00",
       "2100-01-01 00:00:00"},
      {Century, "1982-06-10 00:00:00", "1984-06-01 00:00:00", "1900-01-01 00:00:00",
       "2000-01-01 00:00:00"}};
  for (const Row& row : kRows) {
    const CalendarRange range =
        FitCalendarRange(*ParseDay(row.o_min), *ParseDay(row.o_max), row.type);
    const std::string what = std::string(row.o_min) + " to " + row.o_max + ", type " +
                             std::to_string(static_cast<int>(row.type));
    EXPECT_EQ(Text(range.min), row.min) << what;
    EXPECT_EQ(Text(range.max), row.max) << what;
  }
}

TEST(FitCalendarRange, IsNeverEmpty) {
  for (int type = 0; type < 12; ++type) {
    for (int i = 0; i < 2000; ++i) {
      const double o_min = 1 + i * 37.123;
      const double o_max = o_min + (i % 7 == 0 ? 1e-6 : i * 0.77);
      const CalendarRange range = FitCalendarRange(o_min, o_max, static_cast<DateTickType>(type));
      ASSERT_LT(range.min, range.max) << type << ": " << Text(o_min) << " to " << Text(o_max);
      ASSERT_LE(range.min, o_min + 1e-8) << type << ": " << Text(o_min);
    }
  }
}

TEST(SuggestDateTickType, GivesSomeTicksButNotTooMany) {
  const double start = *ParseDay("2024-03-05 10:12:00");
  struct Row {
    double days;
    DateTickType type;
    const char* format;
  };
  constexpr Row kRows[] = {{1.0 / 1440, DateTickType::Automatic, "hh:nn:ss"},
                           {0.01, DateTickType::Minute, "hh:nn:ss"},
                           {0.5, DateTickType::HalfHour, "hh:nn"},
                           {1, DateTickType::Hour, "hh:nn"},
                           {20, DateTickType::Day, "dd-mmm"},
                           {100, DateTickType::Week, "dd-mmm"},
                           {700, DateTickType::Month, "mmm yyyy"},
                           {20000, DateTickType::Year, "yyyy"}};
  for (const Row& row : kRows) {
    EXPECT_EQ(SuggestDateTickType(start, start + row.days), row.type) << row.days;
    EXPECT_EQ(SuggestDateFormat(start, start + row.days), row.format) << row.days;
  }
  EXPECT_EQ(SuggestDateTickType(0.25, 0.75), DateTickType::Automatic);
}

}  // namespace
}  // namespace tarnwick
