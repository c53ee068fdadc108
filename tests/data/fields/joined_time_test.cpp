#include "data/fields/joined_time.h"

#include <gtest/gtest.h>

#include "base/day_number.h"
#include "data/guess/time_guess.h"

namespace tarnwick {
namespace {

using enum TimePart;

TEST(JoinedTime, DescribesItsColumns) {
  for (const char* text : {"Date:DATE\tTime:MST", "Year:#0\tMonth:#2\tDay:#3\tHour:a:b\tMinute:m",
                           "Year:y\tDayOfYear:d\tHourMinute:t\tSecond:s"}) {
    const std::optional<JoinedTime> joined = JoinedTime::Parse(text);
    ASSERT_TRUE(joined.has_value()) << text;
    EXPECT_EQ(joined->Text(), text);
  }
  for (const char* text : {"", "Date", "Date:", "date:x", "Date:x\t", "Date:x\tYear:y",
                           "Day:a\tDay:b", "Time:t\tHour:h", "DayOfYear:d\tMonth:m"}) {
    EXPECT_FALSE(JoinedTime::Parse(text).has_value()) << text;
  }
}

TEST(JoinedTime, JoinsTexts) {
  const struct {
    std::vector<TimePart> parts;
    std::vector<std::string_view> texts;
    std::optional<double> day;
  } rows[] = {
      {{Date, Time}, {"20190101", "1610"}, JoinDay({2019, 1, 1, 16, 10})},
      {{Date, Time}, {"20190101", "5"}, JoinDay({2019, 1, 1, 0, 5})},
      {{Date, Time}, {"10/14/2018", " 00:01 "}, JoinDay({2018, 10, 14, 0, 1})},
      {{Date, Time}, {"10/14/2018 0:00", "6:05:06 PM"}, JoinDay({2018, 10, 14, 18, 5, 6})},
      {{Time, Date}, {"120506.5", "2018-10-14"}, JoinDay({2018, 10, 14, 12, 5, 6, 500})},
      {{Date, Time}, {"2018-10-14", "23:00-05:00"}, JoinDay({2018, 10, 15, 4})},
      {{Date, Hour}, {"2018-10-14", "24"}, JoinDay({2018, 10, 15})},
      {{Year, Month, Day, Hour, Minute},
       {"2016", "1", "02", "3", "4"},
       JoinDay({2016, 1, 2, 3, 4})},
      {{Year, Month, Day}, {"16", "2", "29.5"}, JoinDay({2016, 2, 29, 12})},
      {{Year, DayOfYear, HourMinute}, {"2016", "366", "2359"}, JoinDay({2016, 12, 31, 23, 59})},
      {{Month, Day, Hour}, {"1", "1", "0.5"}, JoinDay({2001, 1, 1, 0, 30})},
      {{Year, Month}, {"1958", "3"}, JoinDay({1958, 3, 1})},
      {{YearMonth}, {"195803"}, JoinDay({1958, 3, 1})},
      {{YearMonth}, {"195813"}, std::nullopt},
      {{YearWeek}, {"199002"}, JoinDay({1990, 1, 8})},
      {{YearWeek}, {"199054"}, std::nullopt},
      {{YearWeek}, {"1990:2"}, JoinDay({1990, 1, 8})},
      {{YearMonth}, {"1958:3"}, JoinDay({1958, 3, 1})},
      {{YearQuarter}, {"1958:3"}, JoinDay({1958, 7, 1})},
      {{YearQuarter}, {"1958-4"}, JoinDay({1958, 10, 1})},
      {{YearQuarter}, {"1958:5"}, std::nullopt},
      {{Year}, {"1999/00"}, JoinDay({1999, 1, 1})},
      {{Year}, {"1999-2000"}, JoinDay({1999, 1, 1})},
      {{Year}, {"1999/01"}, std::nullopt},
      {{YearMonthDay}, {"891101"}, JoinDay({1989, 11, 1})},
      {{YearMonthDay, Hour}, {"00/12/16", "6"}, JoinDay({2000, 12, 16, 6})},
      {{YearMonthDay}, {"00/13/16"}, std::nullopt},
      {{YearMonthDay}, {"00/12"}, std::nullopt},
      {{MonthDayYear}, {"071301"}, JoinDay({2001, 7, 13})},
      {{DayMonthYear}, {"130701"}, JoinDay({2001, 7, 13})},
      {{DayMonthYear}, {"310201"}, std::nullopt},
      {{MonthYear}, {"03/87"}, JoinDay({1987, 3, 1})},
      {{MonthYear}, {"13/87"}, std::nullopt},
      {{Hour, Minute}, {"6", "0"}, 0.25},
      {{Date, Time, AmPm}, {"2019-01-01", "12:05", "AM"}, JoinDay({2019, 1, 1, 0, 5})},
      {{Date, Time, AmPm}, {"2019-01-01", "12:05", "p.m."}, JoinDay({2019, 1, 1, 12, 5})},
      {{Date, AmPm, Time}, {"2019-01-01", "pm", "1:05"}, JoinDay({2019, 1, 1, 13, 5})},
      {{Date, Time, AmPm}, {"2019-01-01", "13:05", "AM"}, std::nullopt},
      {{Date, Time, AmPm}, {"2019-01-01", "1:05", "noon"}, std::nullopt},
      {{Date, Time}, {"20190230", "1610"}, std::nullopt},
      {{Date, Time}, {"20190101", "1660"}, std::nullopt},
      {{Date, Time}, {"20190101", "2401"}, std::nullopt},
      {{Date, Time}, {"20190101", "-5"}, std::nullopt},
      {{Date, Time}, {"20190101", "0.5"}, std::nullopt},
      {{Date, Time}, {"20190101", "124:30"}, std::nullopt},
      {{Date, HourMinute}, {"20190101", "120506"}, std::nullopt},
      {{Date, Time}, {"20190101", ""}, std::nullopt},
      {{Date, Time}, {"20190101"}, std::nullopt},
      {{Year, Month, Day}, {"2015", "2", "29"}, std::nullopt},
      {{Year, Month}, {"2015", "13"}, std::nullopt},
      {{Year, DayOfYear}, {"2015", "366"}, std::nullopt},
      {{Hour, Minute}, {"24", "1"}, std::nullopt},
      {{Year, Month}, {"1e300", "1"}, std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(JoinTime(row.parts, row.texts, ColumnFormat::Automatic), row.day)
        << row.texts.front() << " " << row.texts.back();
  }
}

struct Table {
  const char* what;
  std::vector<std::string> names;
  std::vector<std::vector<std::string_view>> columns;
  std::vector<TimePart> parts;
  std::vector<std::size_t> at;
  ColumnFormat format = ColumnFormat::DateTime;
};

TEST(JoinedTime, IsFoundInTables) {
  const std::vector<std::string_view> year = {"2016", "2016", "2016"};
  const std::vector<std::string_view> one = {"1", "1", "1"};
  const std::vector<std::string_view> count = {"1", "2", "3"};
  const std::vector<std::string_view> same_day = {"20190101", "20190101", "20190101"};
  const Table tables[] = {
      {"names with units",
       {"DATE (MM/DD/YYYY)", "MST", "P [W]"},
       {{"10/14/2018", "10/14/2018"}, {"00:00", "00:01"}, {"1", "2"}},
       {Date, Time},
       {0, 1},
       ColumnFormat::DateMonthFirst},
      {"day first",
       {"Time", "Date"},
       {{"00:00", "00:01"}, {"14/10/2018", "14/10/2018"}},
       {Time, Date},
       {0, 1},
       ColumnFormat::DateDayFirst},
      {"written so",
       {"a", "b"},
       {{"2018-10-14", "2018-10-14"}, {"00:00", "00:01"}},
       {Date, Time},
       {0, 1}},
      {"half of the day in a column of its own",
       {"Date", "Time", "AM/PM", "T"},
       {{"3/14/2024", "3/14/2024"}, {"12:00", "1:00"}, {"PM", "PM"}, {"1", "2"}},
       {Date, Time, AmPm},
       {0, 1, 2},
       ColumnFormat::DateMonthFirst},
      {"half of the day without names",
       {},
       {{"2018-10-14", "2018-10-14"}, {"11:30", "12:30"}, {"a.m.", "p.m."}},
       {Date, Time, AmPm},
       {0, 1, 2}},
      {"half of the day without date",
       {"t", "", "T"},
       {{"11:00", "12:00", "1:00"}, {"AM", "PM", "PM"}, count},
       {Time, AmPm},
       {0, 1}},
      {"no year",
       {"Month", "Day", "Hour", "T"},
       {one, one, {"0", "1", "2"}, count},
       {Month, Day, Hour},
       {0, 1, 2}},
      {"small letters are minutes",
       {"#YY", "MM", "DD", "hh", "mm"},
       {year, one, one, one, {"0", "10", "20"}},
       {Year, Month, Day, Hour, Minute},
       {0, 1, 2, 3, 4}},
      {"a minimum",
       {"year", "month", "day", "hour", "min"},
       {year, one, one, count, {"-5.5", "70", "3"}},
       {Year, Month, Day, Hour},
       {0, 1, 2, 3}},
      {"day of year between",
       {},
       {year, one, one, one, one, {"0", "1", "2"}, {"0.0", "0.1", "0.2"}},
       {Year, Month, Day, Hour, Minute},
       {0, 2, 3, 4, 5}},
      {"a month that is no day of the year",
       {},
       {year, {"7", "7", "7"}, one, one, count},
       {Year, Month, Day, Hour, Minute},
       {0, 1, 2, 3, 4}},
      {"days are enough", {}, {year, one, count, count, one}, {Year, Month, Day}, {0, 1, 2}},
      {"compact beside hhmm",
       {},
       {{"53131", "53131", "53131"}, same_day, {"1610", "1615", "1620"}},
       {Date, Time},
       {1, 2}},
      {"year and month in one",
       {"YYYYMM", "T"},
       {{"195811", "195812", "195901"}, count},
       {YearMonth},
       {0}},
      {"weeks", {"week", "T"}, {{"199051", "199052", "199101"}, count}, {YearWeek}, {0}},
      {"a month in letters, a zone before the year",
       {},
       {{"Sun", "Sun", "Mon"},
        {"Sep", "Sep", "Sep"},
        {"26", "26", "27"},
        {"09:33:34", "09:33:38", "00:12:00"},
        {"EDT", "EDT", "EDT"},
        {"1999", "1999", "1999"}},
       {Month, Day, Time, Year},
       {1, 2, 3, 5}},
      {"a month in letters behind its day",
       {"a", "b", "c"},
       {{"26", "26", "27"}, {"Sep", "Sep", "Sep"}, {"1999", "1999", "1999"}},
       {Day, Month, Year},
       {0, 1, 2}},
      {"days of eight digits under another name",
       {"X3"},
       {{"20161130", "20161201", "20161130", "20170102", "20170103", "20170104", "20170105",
         "20170106"}},
       {Date},
       {0}},
      {"twelve digits", {}, {{"200306130209", "200306130209", "200306122341"}}, {Date}, {0}},
      {"a date and a time of digits",
       {"Tdate", "Ttime"},
       {{" 20100421", " 20100421", " 20100421"}, {" 100048", " 093725", " 093726"}},
       {Date, Time},
       {0, 1}},
      {"numbers of six digits", {"load", "T"}, {{"195811", "195812", "195901"}, count}, {}, {}},
      {"compact alone", {}, {{"20190130", "20190131", "20190201"}, {"3", "1", "2"}}, {Date}, {0}},
      {"compact by name",
       {"Obs_Date", "v"},
       {{"20190201", "20190131", "20190130"}, count},
       {Date},
       {0}},
      {"rising numbers", {}, {{"20190130", "20190131", "20190132"}, count}, {}, {}},
      {"named otherwise", {"id", "v"}, {{"20190130", "20190131", "20190201"}, count}, {}, {}},
      {"a year and an index", {}, {year, count, count}, {}, {}},
      {"years", {}, {{"2014", "2015", "2016"}, count, count}, {}, {}},
      {"time that has passed",
       {"Date", "Time (s)"},
       {{"2018-10-14", "2018-10-14"}, {"0", "1"}},
       {},
       {}},
      {"hours to midnight",
       {"Date", "Time"},
       {{"2018-10-14", "2018-10-14", "2018-10-14"}, {"22", "23", "24"}},
       {Date, Hour},
       {0, 1}},
      {"date with its own time",
       {"date", "time"},
       {{"2018-10-14 06:00", "2018-10-14 07:00"}, {"00:01", "00:02"}},
       {},
       {}},
      {"day alone", {"day", "hour"}, {count, count}, {}, {}},
      {"times only", {"hour", "minute"}, {one, count}, {}, {}},
      {"nothing", {}, {}, {}, {}},
      {"no rows", {"date", "time"}, {{}, {}}, {}, {}},
  };
  for (const Table& table : tables) {
    const auto found = FindJoinedTime(table.names, table.columns);
    EXPECT_EQ(found.has_value(), !table.parts.empty()) << table.what;
    if (!found) continue;
    EXPECT_EQ(found->parts, table.parts) << table.what;
    EXPECT_EQ(found->columns, table.at) << table.what;
    EXPECT_EQ(found->date_format, table.format) << table.what;
  }
}

TEST(JoinedTime, TellsUnixTimes) {
  const struct {
    const char* name;
    std::vector<double> values;
    std::optional<ColumnFormat> format;
  } rows[] = {
      {"Timestamp", {1709532000.5, 1709532001}, ColumnFormat::UnixSeconds},
      {"unix_time (ms)", {1709532000000, 86400000.0 * 400}, ColumnFormat::UnixMilliseconds},
      {"", {1709532000, 1709535600, 1709539200}, ColumnFormat::UnixSeconds},
      {"#0", {1709532000123, 1709532000124, 1709532000125}, ColumnFormat::UnixMilliseconds},
      {"", {1e9, 1.001e9, 1.002e9}, std::nullopt},
      {"", {1709532000, 1709532000.5, 1709532001}, std::nullopt},
      {"", {1709532000, 1709531999, 1709532001}, std::nullopt},
      {"freq", {1709532000, 1709535600, 1709539200}, std::nullopt},
      {"t", {1709532000, 1709535600, 1709539200}, ColumnFormat::UnixSeconds},
      {"Date", {1709532000123, 1709532000124, 1709532000125}, ColumnFormat::UnixMilliseconds},
      {"t", {1709532000, 1709535600, 1709535500}, std::nullopt},
      {"time", {0, 1, 2}, std::nullopt},
      {"time", {}, std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(LooksLikeUnixTime(row.name, row.values), row.format) << row.name;
  }
}

}  // namespace
}  // namespace tarnwick
