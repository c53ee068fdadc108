#include "graph/axes/calendar_scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "base/day_number.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMinutesPerDay = 1440;
constexpr std::int64_t kDaysPerWeek = 7;
constexpr int kMonthsPerYear = 12;

enum class Clock { Minutes, Days, Months };

/// A unit is a whole number of minutes, days or months.
struct Unit {
  Clock clock;
  int count;
  double step_days;
};

/// By DateTickType.
constexpr std::array<Unit, 12> kUnits{{{Clock::Minutes, 1, 1.0 / 1440},
                                       {Clock::Minutes, 5, 5.0 / 1440},
                                       {Clock::Minutes, 30, 1.0 / 48},
                                       {Clock::Minutes, 60, 1.0 / 24},
                                       {Clock::Days, 1, 1},
                                       {Clock::Days, 7, 7},
                                       {Clock::Months, 1, 30},
                                       {Clock::Months, 2, 61},
                                       {Clock::Months, 3, 91},
                                       {Clock::Months, kMonthsPerYear, 365},
                                       {Clock::Months, 10 * kMonthsPerYear, 3654},
                                       {Clock::Months, 100 * kMonthsPerYear, 36540}}};

const Unit& UnitOf(DateTickType type) {
  return kUnits[std::min(static_cast<std::size_t>(type), kUnits.size() - 1)];
}

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

double MidnightOf(const DateTime& parts) {
  return JoinDay({.year = parts.year, .month = parts.month, .day = parts.day});
}

/// Day 1 is a Sunday; weeks are counted from it.
constexpr std::int64_t kFirstSunday = 1;

/// The next unit that begins at or after `day`.
double NextStart(double day, DateTickType type) {
  const double start = UnitStart(UnitIndex(day, type), type);
  if (JoinDay(SplitDay(day)) <= start) return start;
  return UnitStart(UnitIndex(day, type) + 1, type);
}

double UpperHalfHour(double day) {
  const DateTime parts = SplitDay(day);
  const bool full_hour = parts.minute == 0 && parts.second == 0 && parts.millisecond == 0;
  if (!full_hour && parts.minute < 30) {
    return UnitStart(UnitIndex(day, DateTickType::HalfHour) | 1, DateTickType::HalfHour);
  }
  return NextStart(day, DateTickType::Hour);
}

/// Decades and centuries close with the start of their last unit, so data beyond it stay outside.
double UpperLongUnit(double day, DateTickType type) {
  const double year = NextStart(day, DateTickType::Year);
  return UnitStart(UnitIndex(year, type), type);
}

double RoundUp(double o_max, double o_min, DateTickType type) {
  switch (type) {
    case DateTickType::HalfHour:
      return UpperHalfHour(o_max);
    case DateTickType::Week:
      return MidnightOf(SplitDay(o_max)) + 8 - DayOfWeek(o_min);
    case DateTickType::Decade:
    case DateTickType::Century:
      return UpperLongUnit(o_max, type);
    default:
      return NextStart(o_max, type);
  }
}

}  // namespace

double StepDays(DateTickType type) {
  return type >= DateTickType::Automatic ? 0 : UnitOf(type).step_days;
}

std::int64_t UnitIndex(double day, DateTickType type) {
  const Unit& unit = UnitOf(type);
  const DateTime parts = SplitDay(day);
  if (unit.clock == Clock::Months) {
    return FloorDivide(std::int64_t{parts.year} * kMonthsPerYear + parts.month - 1, unit.count);
  }
  const auto days = static_cast<std::int64_t>(MidnightOf(parts));
  if (unit.clock == Clock::Minutes) {
    return FloorDivide(days * kMinutesPerDay + parts.hour * 60 + parts.minute, unit.count);
  }
  return unit.count == kDaysPerWeek ? FloorDivide(days - kFirstSunday, kDaysPerWeek) : days;
}

double UnitStart(std::int64_t index, DateTickType type) {
  const Unit& unit = UnitOf(type);
  const std::int64_t count = index * unit.count;
  switch (unit.clock) {
    case Clock::Minutes:
      return static_cast<double>(count) / static_cast<double>(kMinutesPerDay);
    case Clock::Days:
      return static_cast<double>(count + (unit.count == kDaysPerWeek ? kFirstSunday : 0));
    case Clock::Months:
      break;
  }
  const std::int64_t year = FloorDivide(count, kMonthsPerYear);
  return JoinDay({.year = static_cast<int>(year),
                  .month = static_cast<int>(count - year * kMonthsPerYear) + 1,
                  .day = 1});
}

bool IsCalendarRange(double o_min, double o_max) {
  return o_min >= 1 && o_max > o_min && IsCalendarDay(o_min) && IsCalendarDay(o_max);
}

CalendarRange FitCalendarRange(double o_min, double o_max, DateTickType type) {
  CalendarRange range{UnitStart(UnitIndex(o_min, type), type), RoundUp(o_max, o_min, type)};
  if (range.max <= range.min) range.max = UnitStart(UnitIndex(range.min, type) + 1, type);
  return range;
}

DateTickType SuggestDateTickType(double o_min, double o_max) {
  struct Candidate {
    DateTickType type;
    double longest_days;
  };
  // Each unit as long as rounding to the next would leave much of the axis empty. Decades and centuries can end before
  // the data do, and two months are no natural choice.
  constexpr std::array kCandidates{
      Candidate{DateTickType::Minute, 1.0 / 48},  Candidate{DateTickType::FiveMinutes, 1.0 / 8},
      Candidate{DateTickType::HalfHour, 1.0 / 2}, Candidate{DateTickType::Hour, 4},
      Candidate{DateTickType::Day, 50},           Candidate{DateTickType::Week, 120},
      Candidate{DateTickType::Month, 3 * 366},    Candidate{DateTickType::Quarter, 6 * 366}};
  constexpr double kFewestUnits = 3;
  const double span = o_max - o_min;
  if (!IsCalendarRange(o_min, o_max) || span < kFewestUnits * StepDays(DateTickType::Minute)) {
    return DateTickType::Automatic;
  }
  for (const Candidate& candidate : kCandidates) {
    if (span <= candidate.longest_days) return candidate.type;
  }
  return DateTickType::Year;
}

std::string SuggestDateFormat(double o_min, double o_max) {
  struct Row {
    double longest_days;
    const char* format;
  };
  constexpr std::array kFormats{Row{10.0 / 86400, kToTheMillisecond},
                                Row{15.0 / 1440, "hh:nn:ss"},
                                Row{1, "hh:nn"},
                                Row{4, "dd-mmm hh:nn"},
                                Row{120, "dd-mmm"},
                                Row{6 * 366, "mmm yyyy"}};
  const double span = o_max - o_min;
  for (const Row& row : kFormats) {
    if (span <= row.longest_days) return row.format;
  }
  return "yyyy";
}

}  // namespace tarnwick
