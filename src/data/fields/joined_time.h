// A date and time that stands in several columns. Knows no lines and no files; columns are texts and names.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/ds_info.h"

namespace tarnwick {

/// What one column gives to a time.
enum class TimePart : std::uint8_t {
  Date,
  Time,
  Year,  ///< also 2000/01 and 2000/2001, which begin in 2000
  Month,
  Day,
  DayOfYear,
  Hour,
  Minute,
  Second,
  HourMinute,    ///< 1610 is 16:10, 5 is 00:05
  YearMonth,     ///< 202403, 2024:3 is March 2024
  Quarter,       ///< 1 to 4
  Week,          ///< of ISO 8601, 1 to 53
  AmPm,          ///< "AM" or "p.m.": the half of the day that a time of twelve hours lies in
  YearWeek,      ///< 199052, 1990:52 is the week of ISO 8601
  YearQuarter,   ///< 1990:1 begins in January
  YearMonthDay,  ///< 891101, 89/11/01 is 1 November 1989
  MonthDayYear,  ///< 110189
  DayMonthYear,  ///< 011189
  MonthYear      ///< 11/89 is November 1989
};

/// True when no two of the parts say the same, as a date and a month do; false also for none.
bool AreCompatible(std::span<const TimePart> parts);

/// The columns of TDSInfo::TimeColumns.
struct JoinedTime {
  struct Part {
    TimePart part = TimePart::Date;
    std::string column;  ///< a name, or "#" and the position from 0
    bool operator==(const Part&) const = default;
  };
  std::vector<Part> parts;

  /// Entries separated by tabs, each a part's name, a colon and the column: "Date:DATE\tTime:MST". Nothing when one is no
  /// such entry or the parts are not compatible.
  static std::optional<JoinedTime> Parse(std::string_view text);
  std::string Text() const;
};

/// The day number that texts of equal number with compatible parts mean together. A date is read by `date_format`, as a
/// DateTime where that is no date's format; beside parts of the time its own time counts nothing. A time is "12:05:06", with
/// am or pm, "1205", "120506" or "5" (00:05). Day, day of year, hour and minute may have fractions; hours go to 24. A month is a
/// number or its name. A month or a day without year lies in 2001, a year without month in January; a time without any date lies
/// on day 0. Nothing when a text is no such part or out of range, a time after noon is said to lie before it, or the date does
/// not exist.
std::optional<double> JoinTime(std::span<const TimePart> parts,
                               std::span<const std::string_view> texts, ColumnFormat date_format);

}  // namespace tarnwick
