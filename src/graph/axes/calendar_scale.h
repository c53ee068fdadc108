// Calendar units of a time axis: their lengths, rounding of day numbers to them, and the calendar autoscale. Knows dates,
// no axis.
#pragma once

#include <cstdint>
#include <string>

#include "graph/axes/axis_state.h"

namespace tarnwick {

/// Days of a unit as a step (a month 30, a year 365, ...); 0 for Automatic.
double StepDays(DateTickType type);

/// The number of the unit that `day` lies in, counted from a fixed origin: weeks begin on Sunday, a two-month unit in an
/// odd month, a quarter in January, April, July or October, decades and centuries in years divisible by 10 and 100.
std::int64_t UnitIndex(double day, DateTickType type);
/// The day number at which a unit begins.
double UnitStart(std::int64_t index, DateTickType type);

struct CalendarRange {
  double min = 0;
  double max = 1;
};

/// True when the calendar autoscale applies: o_min < o_max, o_min >= 1, both inside the calendar.
bool IsCalendarRange(double o_min, double o_max);

/// Both ends rounded to the unit; max goes one unit up where it would not be above min. Only for IsCalendarRange and a
/// type other than Automatic.
CalendarRange FitCalendarRange(double o_min, double o_max, DateTickType type);

/// A unit for freshly imported time data, so that some three to a hundred of them show; Automatic where the calendar autoscale
/// does not apply (one value, times of day alone).
DateTickType SuggestDateTickType(double o_min, double o_max);

/// The finest format there is need for.
inline constexpr const char* kToTheMillisecond = "hh:nn:ss.zzz";

/// A label format for data over that range: kToTheMillisecond, "hh:nn:ss", "hh:nn", "dd-mmm hh:nn", "dd-mmm", "mmm yyyy", "yyyy".
std::string SuggestDateFormat(double o_min, double o_max);

}  // namespace tarnwick
