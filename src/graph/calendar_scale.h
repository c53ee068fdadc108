// Calendar units of a time axis: their lengths, rounding of day numbers to them, and the calendar autoscale. Knows dates,
// no axis.
#pragma once

#include <string>

#include "graph/axis_state.h"

namespace tarnwick {

/// Days of a unit as a step (a month 30, a year 365, ...); 0 for Automatic.
double StepDays(DateTickType type);

/// Units of the table that have a rounding rule: all but Automatic.
double RoundDownToUnit(double day, DateTickType type);
/// The upper end for `o_max`. Weeks are counted from the day of the week of `o_min`; a decade or century goes by the
/// year rounded down.
double RoundUpToUnit(double o_max, double o_min, DateTickType type);

/// The first unit boundary strictly after `day`, `count` units on when day is itself a boundary.
double NextUnit(double day, DateTickType type, int count);

struct CalendarRange {
  double min = 0;
  double max = 1;
};

/// True when the calendar autoscale applies: o_min < o_max, o_min >= 1, both inside the calendar.
bool IsCalendarRange(double o_min, double o_max);

/// Both ends rounded to the unit; max goes one unit up where it would not be above min. Only for IsCalendarRange and a
/// type other than Automatic.
CalendarRange FitCalendarRange(double o_min, double o_max, DateTickType type);

/// A unit for freshly imported time data, so that five to some fifty ticks show; Automatic where the calendar autoscale
/// does not apply (one value, times of day alone).
DateTickType SuggestDateTickType(double o_min, double o_max);

/// A label format for data over that range: "hh:nn:ss", "hh:nn", "dd-mmm hh:nn", "dd-mmm", "mmm yyyy", "yyyy".
std::string SuggestDateFormat(double o_min, double o_max);

}  // namespace tarnwick
