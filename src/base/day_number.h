// Day numbers and the calendar: day 0 is 30 December 1899, the fraction is the time of day. Proleptic Gregorian
// calendar, years 1 to 9999; zones of texts are turned to UTC. Calendar arithmetic after H. Hinnant, "chrono-Compatible
// Low-Level Date Algorithms". Texts are written with English names.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
inline constexpr std::array<std::string_view, 7> kWeekdayNames = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

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

/// A day number to be read and typed again by ParseDay: yyyy-mm-dd, with the time where there is one, to the millisecond where
/// it needs them. The shortest text of the number where the calendar has no such day.
std::string MomentText(double day);

/// Which part comes first in a date written with slashes.
enum class SlashDate { MonthFirst, DayFirst };

/// The day number that the whole of `text` means, in UTC when it names a zone. A date is yyyy-mm-dd, yyyy/mm/dd,
/// yyyy.mm.dd, dd.mm.yyyy, mm/dd/yyyy (or dd/mm/yyyy), dd-mmm-yyyy with the month's name or its first three letters or more
/// (blanks, slashes or nothing may stand for the dashes), mmm dd, yyyy, or yyyymmdd where a time follows; a weekday's name
/// may go before. Behind the date stands nothing, or a time after blanks, "T", ":", "_" or a comma and blanks; or the order is
/// mmm dd time yyyy. A time is hh:mm[:ss[.fff]], with am or pm if need be, to 24:00 (behind yyyymmdd also hh, hhmm,
/// hhmmss), or stands alone: the hours may then run to 9999, as in a time that has passed. Zones: Z, UTC, GMT, +02:00,
/// +0200, +02, UTC+2, letters that mean one offset everywhere (EST, CEST, JST, …), behind the time or the year; a place
/// behind them or alone ("[Europe/Paris]", "America/New_York") is passed over. Years of two digits behind day and month: 69 to 99
/// are 19xx, 00 to 68 20xx. Months may be named in other languages as well, as WithEnglishMonth reads them.
/// Nothing when the text is none of these or the date does not exist.
std::optional<double> ParseDay(std::string_view text, SlashDate slash_date = SlashDate::MonthFirst);

/// The day number of the digits yyyymmdd, yyyymmddhh, yyyymmddhhmm or yyyymmddhhmmss[.fff], a zone behind the time if need
/// be: dates that ParseDay leaves to the numbers.
std::optional<double> ParseCompactDay(std::string_view text);

/// True when ParseDay reads `text`, in either order of day and month, and its time names a zone.
bool HasZone(std::string_view text);

/// The beginning of the interval between two moments as ISO 8601 writes it: "2020-06-01T00:00:00" of
/// "2020-06-01T00:00:00/2020-06-01T01:00:00" or of the same with "--" between. Empty where `text` is none.
std::string_view BeginningOfInterval(std::string_view text);

}  // namespace tarnwick
