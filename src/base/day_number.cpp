#include "base/day_number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMillisecondsPerDay = 86'400'000;
constexpr std::int64_t kDaysFrom1970ToDayZero = -25569;
constexpr double kFirstDay = -693593;  // 1 January 1
constexpr double kEndDay = 2958466;    // the day after 31 December 9999

// Days since 1 January 1970 of a date; Hinnant's days_from_civil.
std::int64_t DaysFromCivil(std::int64_t year, int month, int day) {
  if (month <= 2) --year;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

// The date of a day since 1 January 1970; Hinnant's civil_from_days.
DateTime CivilFromDays(std::int64_t days) {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t day_of_era = days - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted_month = (5 * day_of_year + 2) / 153;
  DateTime date;
  date.day = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
  date.month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  date.year = static_cast<int>(year_of_era + era * 400 + (date.month <= 2 ? 1 : 0));
  return date;
}

std::int64_t Milliseconds(double day) {
  if (IsUndefined(day)) return 0;
  const double last = kEndDay - 1.0 / static_cast<double>(kMillisecondsPerDay);
  return std::llround(std::clamp(day, kFirstDay, last) * static_cast<double>(kMillisecondsPerDay));
}

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

}  // namespace

bool IsCalendarDay(double day) {
  return day >= kFirstDay && day * static_cast<double>(kMillisecondsPerDay) <
                                 kEndDay * static_cast<double>(kMillisecondsPerDay) - 0.5;
}

DateTime SplitDay(double day) {
  const std::int64_t total = Milliseconds(day);
  const std::int64_t days = FloorDivide(total, kMillisecondsPerDay);
  const auto rest = static_cast<int>(total - days * kMillisecondsPerDay);
  DateTime parts = CivilFromDays(days + kDaysFrom1970ToDayZero);
  parts.hour = rest / 3'600'000;
  parts.minute = rest / 60'000 % 60;
  parts.second = rest / 1000 % 60;
  parts.millisecond = rest % 1000;
  return parts;
}

double JoinDay(const DateTime& parts) {
  const std::int64_t months = std::int64_t{parts.year} * 12 + parts.month - 1;
  const std::int64_t year = FloorDivide(months, 12);
  const auto month = static_cast<int>(months - year * 12) + 1;
  const std::int64_t days = DaysFromCivil(year, month, 1) + parts.day - 1 - kDaysFrom1970ToDayZero;
  const std::int64_t seconds =
      std::int64_t{parts.hour} * 3600 + std::int64_t{parts.minute} * 60 + parts.second;
  // One division, so that equal moments give the same double however they were written.
  return static_cast<double>(days * kMillisecondsPerDay + seconds * 1000 + parts.millisecond) /
         static_cast<double>(kMillisecondsPerDay);
}

int DayOfWeek(double day) {
  const std::int64_t days = FloorDivide(Milliseconds(day), kMillisecondsPerDay);
  const std::int64_t since_sunday = days - 1;  // day 1 is Sunday, 31 December 1899
  return static_cast<int>(since_sunday - FloorDivide(since_sunday, 7) * 7) + 1;
}

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return kDays[static_cast<std::size_t>(month - 1)] + (leap && month == 2 ? 1 : 0);
}

}  // namespace tarnwick
