// The calendar autoscale, row by row of its table.
#include "graph/axes/calendar_scale.h"

#include <gtest/gtest.h>

#include <string>

#include "base/day_number.h"

namespace tarnwick {
namespace {

struct Row {
  DateTickType type;
  const char *o_min, *o_max, *min, *max;
};

void Check(const Row& row, const std::string& prefix, const char* format) {
  const double o_min = *ParseDay(prefix + row.o_min);
  const double o_max = *ParseDay(prefix + row.o_max);
  const CalendarRange range = FitCalendarRange(o_min, o_max, row.type);
  EXPECT_EQ(FormatDay(range.min, format), row.min) << row.o_min << " to " << row.o_max;
  EXPECT_EQ(FormatDay(range.max, format), row.max) << row.o_min << " to " << row.o_max;
}

TEST(FitCalendarRange, RoundsToClockTimesAndWeeks) {
  using enum DateTickType;
  constexpr Row kRows[] = {
      {Minute, "01 10:05:20", "01 10:09:01", "01 10:05", "01 10:10"},
      {Minute, "01 10:05:00", "01 10:09:00", "01 10:05", "01 10:09"},
      {Minute, "01 23:58:30", "01 23:59:30", "01 23:58", "02 00:00"},
      {FiveMinutes, "01 10:09:59", "01 10:20:00", "01 10:05", "01 10:20"},
      {FiveMinutes, "01 10:05:00", "01 10:57:00", "01 10:05", "01 11:00"},
      {HalfHour, "01 10:29:59", "01 12:00:00", "01 10:00", "01 12:00"},
      {HalfHour, "01 10:30:00", "01 12:00:01", "01 10:30", "01 12:30"},
      {HalfHour, "01 10:45:00", "01 12:30:00", "01 10:30", "01 13:00"},
      {Hour, "01 10:45:00", "01 12:00:00", "01 10:00", "01 12:00"},
      {Hour, "01 10:45:00", "01 23:00:01", "01 10:00", "02 00:00"},
      {Day, "28 10:45:00", "31 00:00:01", "28 00:00", "01 00:00"},
      {Day, "28 00:00:00", "29 00:00:00", "28 00:00", "29 00:00"},
      // The 5th is a Tuesday: the upper end is counted from it, not from the Thursday 21st.
      {Week, "05 12:00:00", "21 12:00:00", "03 00:00", "26 00:00"},
      {Week, "03 00:00:00", "05 00:00:00", "03 00:00", "12 00:00"}};
  for (const Row& row : kRows) Check(row, "2024-03-", "dd hh:nn");
}

TEST(FitCalendarRange, RoundsToFirstsOfMonthsAndYears) {
  using enum DateTickType;
  constexpr Row kRows[] = {{Month, "2024-01-31 12:00", "2024-03-01", "2024-01-01", "2024-03-01"},
                           {Month, "2024-01-01", "2024-12-01 00:01", "2024-01-01", "2025-01-01"},
                           {TwoMonths, "2024-02-10", "2024-03-01", "2024-01-01", "2024-03-01"},
                           {TwoMonths, "2024-03-10", "2024-11-02", "2024-03-01", "2025-01-01"},
                           {Quarter, "2024-03-10", "2024-04-01", "2024-01-01", "2024-04-01"},
                           {Quarter, "2024-06-10", "2024-10-02", "2024-04-01", "2025-01-01"},
                           {Year, "2022-06-10", "2024-01-01", "2022-01-01", "2024-01-01"},
                           {Year, "2022-06-10", "2024-01-01 00:01", "2022-01-01", "2025-01-01"},
                           {Decade, "1982-06-10", "1999-06-01", "1980-01-01", "2000-01-01"},
                           {Decade, "1982-06-10", "1995-06-01", "1980-01-01", "1990-01-01"},
                           {Decade, "1982-06-10", "1984-06-01", "1980-01-01", "1990-01-01"},
                           {Century, "1982-06-10", "2100-01-01", "1900-01-01", "2100-01-01"},
                           {Century, "1982-06-10", "1984-06-01", "1900-01-01", "2000-01-01"}};
  for (const Row& row : kRows) Check(row, "", "c");
}

TEST(FitCalendarRange, IsNeverEmpty) {
  for (int type = 0; type < 12; ++type) {
    for (int i = 0; i < 2000; ++i) {
      const double o_min = 1 + i * 37.123;
      const double o_max = o_min + (i % 7 == 0 ? 1e-6 : i * 0.77);
      const CalendarRange range = FitCalendarRange(o_min, o_max, static_cast<DateTickType>(type));
      ASSERT_LT(range.min, range.max) << type << ": " << o_min << " to " << o_max;
      ASSERT_LE(range.min, o_min + 1e-8) << type << ": " << o_min;
    }
  }
}

TEST(SuggestDateTickType, GivesSomeTicksButNotTooMany) {
  const double start = *ParseDay("2024-03-05 10:12:00");
  struct Span {
    double days;
    DateTickType type;
    const char* format;
  };
  constexpr Span kSpans[] = {{1.0 / 1440, DateTickType::Automatic, "hh:nn:ss"},
                             {0.01, DateTickType::Minute, "hh:nn:ss"},
                             {0.5, DateTickType::HalfHour, "hh:nn"},
                             {1, DateTickType::Hour, "hh:nn"},
                             {1.3, DateTickType::Hour, "dd-mmm hh:nn"},
                             {20, DateTickType::Day, "dd-mmm"},
                             {100, DateTickType::Week, "dd-mmm"},
                             {150, DateTickType::Month, "mmm yyyy"},
                             {700, DateTickType::Month, "mmm yyyy"},
                             {20000, DateTickType::Year, "yyyy"}};
  for (const Span& span : kSpans) {
    EXPECT_EQ(SuggestDateTickType(start, start + span.days), span.type) << span.days;
    EXPECT_EQ(SuggestDateFormat(start, start + span.days), span.format) << span.days;
  }
  EXPECT_EQ(SuggestDateTickType(0.25, 0.75), DateTickType::Automatic);
}

}  // namespace
}  // namespace tarnwick
