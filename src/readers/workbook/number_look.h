// What a cell's number is shown as: a plain number, a date, a time. Knows the codes of number formats; knows no cells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

enum class NumberLook : std::uint8_t {
  Number,
  Percent,  ///< a hundred times what is stored
  Date,     ///< a day, with the time where there is one
  Time,     ///< a time of day
  Duration  ///< hours, minutes or seconds that have passed
};

/// The look that a format's code gives: "yyyy-mm-dd", "[h]:mm", "0.00".
NumberLook LookOfCode(std::string_view code);

/// The look of a format that has a number and no code in the file.
NumberLook LookOfBuiltIn(int number);

/// Which day is 0 in a workbook.
enum class DayZero : std::uint8_t {
  In1900,  ///< 30 December 1899; before March 1900 one day is lost
  In1904   ///< 1 January 1904
};

/// 0.125 as "12.5%".
std::string PercentText(double share);

/// A number of days as the text that is read as what the sheet shows: "2024-03-04", "2024-03-04 12:30:00", "30:15:00.5". Numbers
/// that are no such day stay numbers.
std::string DayText(double days, NumberLook look, DayZero zero);

/// Seconds as "h:mm:ss", to the millisecond where it needs them.
std::string TimeText(double seconds);

}  // namespace tarnwick
