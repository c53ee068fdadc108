// Day numbers and the calendar: day 0 is 30 December 1899, the fraction is the time of day. Proleptic Gregorian
// calendar, years 1 to 9999, no time zones. Calendar arithmetic after H. Hinnant, "chrono-Compatible Low-Level Date
// Algorithms". English names only.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

/// A moment split into its calendar parts.
struct DateTime {
  int year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  bool operator==(const DateTime&) const = default;
};

/// True when `day` is defined and falls, rounded to the millisecond, into the years 1 to 9999.
bool IsCalendarDay(double day);

/// The parts of a day number, rounded to the millisecond. Days outside the calendar give its nearest end, NaN day 0.
DateTime SplitDay(double day);

/// The day number of these parts. Months outside 1 to 12 run over into the years, the other parts into the next
/// greater one (day 0 is the last day of the month before).
double JoinDay(const DateTime& parts);

/// 1 = Sunday … 7 = Saturday.
int DayOfWeek(double day);

/// Days in a month (1 to 12) of a year.
int DaysInMonth(int year, int month);

/// Text of a day number by a format: d dd ddd dddd (day, name short and long), m mm mmm mmmm (month; m and mm right
/// after h or before s are minutes), yy yyyy, h hh, n nn (minutes), s ss, z zzz (milliseconds), am/pm, a/p, ampm (turn h
/// to 12 hours), c (date as yyyy-mm-dd, and hh:nn:ss when there is a time), '…' and "…" as they stand, and so every
/// other character. Letters in either case. Undefined and days outside the calendar give an empty text.
std::string FormatDay(double day, std::string_view format);

/// Which part comes first in a date written with slashes.
enum class SlashDate { MonthFirst, DayFirst };

/// The day number that the whole of `text` means: yyyy-mm-dd, yyyy/mm/dd, dd.mm.yyyy, mm/dd/yyyy (or dd/mm/yyyy),
/// dd-mmm-yyyy with the month's name or its first three letters (blanks may stand for the dashes), each alone or followed
/// by a blank or "T" and a time; or a time alone, hh:mm[:ss[.fff]], with am or pm if need be. The hours of a time alone may
/// run to 9999, as in a time that has passed. A time zone ("Z", +02:00) after a time is passed over: the clock time as
/// written counts. Years of two digits behind day and month: 69 to 99 are 19xx, 00 to 68 20xx. Nothing when the text is
/// none of these or the date does not exist.
std::optional<double> ParseDay(std::string_view text, SlashDate slash_date = SlashDate::MonthFirst);

}  // namespace tarnwick
