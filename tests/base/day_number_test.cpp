#include "base/day_number.h"

#include <gtest/gtest.h>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(DayNumber, SplitsAndJoinsKnownMoments) {
  const struct {
    double day;
    DateTime parts;
    int weekday;
  } rows[] = {
      {0, {1899, 12, 30}, 7},
      {1, {1899, 12, 31}, 1},
      {25569, {1970, 1, 1}, 5},
      {36585, {2000, 2, 29}, 3},
      {45352, {2024, 3, 1}, 6},
      {-0.75, {1899, 12, 29, 6}, 6},
      {45352.5 + 0.001 / 86400, {2024, 3, 1, 12, 0, 0, 1}, 6},
      {-693593, {1, 1, 1}, 2},
      {2958465, {9999, 12, 31}, 6},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SplitDay(row.day), row.parts) << row.day;
    EXPECT_DOUBLE_EQ(JoinDay(row.parts), row.day);
    EXPECT_EQ(DayOfWeek(row.day), row.weekday) << row.day;
  }
}

TEST(DayNumber, EveryDayOfTheCalendarReturns) {
  for (double day = -693593; day < 2958466; day += 1) {
    ASSERT_EQ(JoinDay(SplitDay(day)), day);
  }
}

TEST(DayNumber, RoundsToTheMillisecondWithCarry) {
  EXPECT_EQ(SplitDay(45352 - 1e-9), (DateTime{2024, 3, 1}));
  EXPECT_EQ(SplitDay(1e300), SplitDay(2958466 - 1.0 / 86400000));
  EXPECT_EQ(SplitDay(-1e300), SplitDay(-693593));
  EXPECT_EQ(SplitDay(kUndefined), SplitDay(0));
  EXPECT_FALSE(IsCalendarDay(2958466));
  EXPECT_FALSE(IsCalendarDay(kUndefined));
}

TEST(DayNumber, CarriesPartsAndMonths) {
  EXPECT_EQ(JoinDay({2023, 14, 1}), JoinDay({2024, 2, 1}));
  EXPECT_EQ(JoinDay({2024, 0, 1}), JoinDay({2023, 12, 1}));
  EXPECT_EQ(JoinDay({2024, 3, 0, 24}), JoinDay({2024, 3, 1}));
  EXPECT_EQ(DaysInMonth(1900, 2), 28);
  EXPECT_EQ(DaysInMonth(2000, 2), 29);
}

TEST(DayNumber, FormatsByLetters) {
  const double day = JoinDay({2024, 3, 5, 15, 7, 9, 42});
  const double midnight = JoinDay({2024, 3, 5});
  const struct {
    double day;
    const char* format;
    const char* text;
  } rows[] = {
      {day, "dd-mmm", "05-Mar"},
      {day, "d/m/yy", "5/3/24"},
      {day, "dddd, d mmmm yyyy", "Tuesday, 5 March 2024"},
      {day, "ddd DDD", "Tue Tue"},
      {day, "hh:mm:ss", "15:07:09"},
      {day, "h:m", "15:7"},
      {day, "mm:ss", "07:09"},
      {day, "m/d h:mm", "3/5 15:07"},
      {day, "h mmm", "15 Mar"},
      {day, "nn.ss,zzz z", "07.09,042 42"},
      {day, "h:nn am/pm", "3:07 pm"},
      {day, "hAMPM", "3PM"},
      {day, "h A/P", "3 P"},
      {midnight, "h:nn am/pm", "12:00 am"},
      {day, "'day 'd\" month \"m", "day 5 month 3"},
      {day, "yyyy'", "2024"},
      {day, "c", "2024-03-05 15:07:09"},
      {midnight, "c", "2024-03-05"},
      {day, "yyyy-mm-ddThh", "2024-03-05T15"},
      {day, "", ""},
      {kUndefined, "yyyy", ""},
      {1e9, "yyyy", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(FormatDay(row.day, row.format), row.text) << row.format;
}

TEST(DayNumber, MomentsAreShortAndReadBack) {
  const struct {
    double day;
    const char* text;
  } rows[] = {{45385, "2024-04-03"},
              {45385.5, "2024-04-03 12:00:00"},
              {JoinDay({2024, 4, 3, 12, 0, 0, 7}), "2024-04-03 12:00:00.007"},
              {1e9, "1000000000"}};
  for (const auto& row : rows) {
    EXPECT_EQ(MomentText(row.day), row.text);
    if (IsCalendarDay(row.day)) {
      EXPECT_NEAR(ParseDay(row.text).value_or(0), row.day, 1e-9) << row.text;
    }
  }
}

TEST(DayNumber, ParsesDatesAndTimes) {
  const double day = JoinDay({2024, 3, 5});
  const struct {
    const char* text;
    double day;
  } rows[] = {
      {"2024-03-05", day},
      {"2024/3/5", day},
      {" 05.03.2024 ", day},
      {"3/5/2024", day},
      {"5.3.24", day},
      {"1.1.69", JoinDay({1969, 1, 1})},
      {"2024-03-05T06:00", day + 0.25},
      {"2024-03-05 06:00:00.000Z", day + 0.25},
      {"2024-03-05T06:00:00+02:00", day + 4 / 24.0},
      {"05.03.2024  18:00", day + 0.75},
      {"3/5/2024 6:00 PM", day + 0.75},
      {"12:00 am", 0},
      {"6:00", 0.25},
      {"06:00:00,5", (6 * 3600 + 0.5) / 86400},
      {"124:30", 5 + 4.5 / 24},
      {"05-Mar-2024 06:00", day + 0.25},
      {"5 march 24", day},
      {"2024.03.05", day},
      {"2024-Mar-5", day},
      {"2024Q1", JoinDay({2024, 1, 1})},
      {"2024H2", JoinDay({2024, 7, 1})},
      {"2024-03-14 12:05:06 America/New_York", JoinDay({2024, 3, 14, 12, 5, 6})},
      {"2024-03-14 12:05 [Europe/Paris]", JoinDay({2024, 3, 14, 12, 5})},
      {"2024-S2", JoinDay({2024, 7, 1})},
      {"H1 2024", JoinDay({2024, 1, 1})},
      {"2024-W01", JoinDay({2024, 1, 1})},
      {"2023-W01", JoinDay({2023, 1, 2})},
      {"2020-W53", JoinDay({2020, 12, 28})},
      {"2024-Q4", JoinDay({2024, 10, 1})},
      {"q2 2024", JoinDay({2024, 4, 1})},
      {"2024M03", JoinDay({2024, 3, 1})},
      {"2024-03", JoinDay({2024, 3, 1})},
      {"03/2024", JoinDay({2024, 3, 1})},
      {"Mar 2024", JoinDay({2024, 3, 1})},
      {"Mar-24", JoinDay({2024, 3, 1})},
      {"2024 march", JoinDay({2024, 3, 1})},
      {"5. März 2024 06:00", day + 0.25},
      {"05.M\xE4rz.2024", day},
      {"5 de marzo de 2024", day},
      {"5 MARS 2024", day},
      {"Mrz 2024", JoinDay({2024, 3, 1})},
      {"07-févr.-24", JoinDay({2024, 2, 7})},
      {"déc. 2024", JoinDay({2024, 12, 1})},
      {"gen-24", JoinDay({2024, 1, 1})},
      {"31 juil. 2024", JoinDay({2024, 7, 31})},
      {"3. Okt. 2024", JoinDay({2024, 10, 3})},
      {"15 août 2024", JoinDay({2024, 8, 15})},
      {"06:00:00:500", (6 * 3600 + 0.5) / 86400},
      {"06:30.5", 390.5 / 86400},
      {"5 Mar, 2024, 6:00 AM", day + 0.25},
      {"05MAR2024:06:00", day + 0.25},
      {"Mar 5, 2024", day},
      {"March 5 2024 06:00", day + 0.25},
      {"Sept. 5, 2024  06:00:00", JoinDay({2024, 9, 5, 6})},
      {"Tue Mar  5 06:00:00 2024", day + 0.25},
      {"Tue Mar 5 06:00:00 UTC 2024", day + 0.25},
      {"Tue Mar 5 06:00:00 2024 -0600", day + 0.5},
      {"Tuesday, 05 Mar 2024 06:00:00 GMT", day + 0.25},
      {"20240305T060000", day + 0.25},
      {"20240305 060000.5Z", day + (6 * 3600 + 0.5) / 86400},
      {"20240305T06", day + 0.25},
      {"20240305 06:00", day + 0.25},
      {"20240305:2400", day + 1},
      {"2024-03-05 24:00", day + 1},
      {"2024-03-05 06:00 +06", day},
      {"2024-03-05 06:00-05:30", day + 11.5 / 24},
      {"2024-03-05_06:00:00,0 utc", day + 0.25},
      {"01:00+02:00", -1 / 24.0},
      {"2024-03-05 06:00 EST", day + 11 / 24.0},
      {"3/5/2024 6:00 PM CEST", day + 16 / 24.0},
      {"Tue Mar 5 06:00:00 JST 2024", day - 3 / 24.0},
      {"2024-03-05 06:00 UTC+1", day + 5 / 24.0},
      {"2024-03-05T06:00:00+02:00[Europe/Paris]", day + 4 / 24.0},
  };
  for (const auto& row : rows) {
    const auto read = ParseDay(row.text);
    ASSERT_TRUE(read.has_value()) << row.text;
    EXPECT_EQ(*read, row.day) << row.text;
  }
  EXPECT_EQ(ParseDay("5/3/2024", SlashDate::DayFirst), day);
  for (const char* text : {"",
                           "12",
                           "1.5",
                           "2024",
                           "2024-02-30",
                           "2023-02-29",
                           "2024-13-01",
                           "2021W53",
                           "2021-W00",
                           "13/13/2024",
                           "0.1.2024",
                           "6:60",
                           "6:0",
                           "6:00:60",
                           "13:00 pm",
                           "2024-03-05x",
                           "5-3-2024",
                           "2024-03-05T",
                           "2024-03/05",
                           "0000-01-01",
                           "1.1.123",
                           "99999-01-01",
                           "6:00:00.",
                           "05 03 2024",
                           "12345:00",
                           "2024-03-05 24:01",
                           "2024-03-05 06:00+15:00",
                           "2024-03-05 06:00+02:60",
                           "2024-03-05 06:00 IST",
                           "31-Apr-2024",
                           "Feb 30, 2024",
                           "Feb 29 12:00:00 2023",
                           "Mar 5",
                           "2024Q5",
                           "Q1 24",
                           "2024H3",
                           "2024H",
                           "2024-03-14 12:05 America/",
                           "2024-03-14 12:05 am/pm/am/pm",
                           "2024M13",
                           "2024 3",
                           "13/2024",
                           "06:30.",
                           "Mar 5 06:00:00",
                           "5 Mar 06:00:00",
                           "Mar 5 2024 06:00 2024",
                           "Ma 5, 2024",
                           "Marx 5, 2024",
                           "Tue",
                           "Tue 06:00",
                           "3dec12",
                           "5 jui 2024",
                           "5 maß 2024",
                           "31 abril 2024",
                           "3e5",
                           "20240305",
                           "20240230T12",
                           "20240305T1260",
                           "20240305T2401",
                           "20240305T1",
                           "12345678901234567890T12",
                           "2024.3",
                           "2024-03-05 06:00 CST",
                           "2024-03-05 06:00 EASY",
                           "2024-03-05 06:00 +1",
                           "2024-03-05 06:00Z[",
                           "T12:00"}) {
    EXPECT_FALSE(ParseDay(text).has_value()) << text;
  }
  for (const char letter : {'1', ' ', 'a', '.', '-', '\xB5'}) {
    EXPECT_FALSE(ParseDay(std::string(1 << 20, letter)).has_value()) << letter;
  }
}

TEST(DayNumber, ReadsDigitsAsDateAndTellsZones) {
  const struct {
    const char* text;
    std::optional<double> day;
  } rows[] = {
      {"20240305", JoinDay({2024, 3, 5})},
      {" 2024030506 ", JoinDay({2024, 3, 5, 6})},
      {"202403050607", JoinDay({2024, 3, 5, 6, 7})},
      {"20240305060708", JoinDay({2024, 3, 5, 6, 7, 8})},
      {"20240305060708.25Z", JoinDay({2024, 3, 5, 6, 7, 8, 250})},
      {"20240230", std::nullopt},
      {"20241301", std::nullopt},
      {"2024030", std::nullopt},
      {"202403051", std::nullopt},
      {"2024030525", std::nullopt},
      {"20240305.5", std::nullopt},
      {"2024-03-05", std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(ParseCompactDay(row.text), row.day) << row.text;
  for (const char* text : {"31/12/2024 06:00Z", "6:00 +02", "Tue Mar 5 06:00:00 2024 GMT"}) {
    EXPECT_TRUE(HasZone(text)) << text;
  }
  for (const char* text : {"2024-03-05 06:00", "2024-02-30 06:00Z", "Z", "5 dez 2024"}) {
    EXPECT_FALSE(HasZone(text)) << text;
  }
}

}  // namespace
}  // namespace tarnwick
