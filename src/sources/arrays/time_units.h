// Times counted from a moment, as arrays keep them. Knows units and calendars in words.
#pragma once

#include <optional>
#include <string_view>

namespace tarnwick {

/// A time is day + count * days.
struct CountedTime {
  double days = 1;  ///< of one unit
  double day = 0;   ///< the day number of the moment
};

/// "hours since 1970-01-01 00:00:00". Nothing for other units (months and years are not of one length), and for moments that
/// cannot be read.
std::optional<CountedTime> ParseCountedTime(std::string_view units);

/// True for the calendar that is in use, by any of its names or none.
bool IsCommonCalendar(std::string_view calendar);

}  // namespace tarnwick
