#include "data/guess/short_dates.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/number_text.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"
#include "data/guess/found_times.h"

namespace tarnwick {
namespace {

using Columns = std::span<const std::vector<std::string_view>>;
using Times = std::vector<double>;

constexpr std::size_t kFewestRows = 8;
constexpr double kLongestMonth = 31.5;

bool IsHour(std::string_view text) {
  text = TrimBlankBytes(text);
  return AreDigits(text, 1) || (AreDigits(text, 2) && text <= "24");
}

bool Rises(const Times& times) {
  return !times.empty() && std::ranges::adjacent_find(times, std::greater_equal()) == times.end();
}

bool RisesEvenly(const Times& times) {
  constexpr double kNear = 1e-6;  // days
  if (!Rises(times)) return false;
  const double step = times[1] - times[0];
  for (std::size_t i = 2; i < times.size(); ++i) {
    if (std::abs(times[i] - times[i - 1] - step) > kNear) return false;
  }
  return true;
}

/// From day to day, a few left out here and there.
bool RisesDaily(const Times& times) {
  constexpr double kMostDays = 5;
  if (!Rises(times)) return false;
  std::size_t next_days = 0;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const double step = times[i] - times[i - 1];
    if (step > kMostDays) return false;
    next_days += step == 1 ? 1 : 0;
  }
  return 2 * next_days > times.size();
}

/// The same day of one month after the other.
bool RisesMonthly(const Times& times) {
  if (!Rises(times)) return false;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const bool next = times[i] - times[i - 1] < kLongestMonth &&
                      SplitDay(times[i]).day == SplitDay(times[i - 1]).day;
    if (!next) return false;
  }
  return true;
}

/// "80000", "80500" to "125500": times in even steps, which the numbers do not have.
bool IsDigitClock(const std::vector<std::string_view>& texts, const Times& times) {
  const auto is_time = [](std::string_view text) {
    text = TrimBlankBytes(text);
    return text.size() >= 3 && text.size() <= 6 && AreDigits(text);
  };
  if (!std::ranges::all_of(texts, is_time) || !RisesEvenly(times)) return false;
  Times numbers;
  for (const std::string_view text : texts) numbers.push_back(*ParseNumber(TrimBlankBytes(text)));
  return !RisesEvenly(numbers);
}

/// Rising or falling, days that come again among them.
bool RunsOn(const Times& times) {
  return !times.empty() && times.front() != times.back() &&
         (std::ranges::is_sorted(times) || std::ranges::is_sorted(times, std::greater()));
}

bool RisesAsNumbers(const std::vector<std::string_view>& texts) {
  return std::ranges::is_sorted(texts, {}, [](std::string_view text) {
    return ParseNumber(TrimBlankBytes(text)).value_or(0);
  });
}

std::optional<JoinedTimeFound> FindSixDigits(Columns columns, std::size_t first) {
  using enum TimePart;
  const auto& days = columns[first];
  const JoinedTimeFound paired{{YearMonthDay, Hour}, {first, first + 1}};
  const bool hours = first + 1 < columns.size() && columns[first + 1].size() == days.size() &&
                     std::ranges::all_of(columns[first + 1], &IsHour);
  if (hours && days.front() != days.back() && RisesEvenly(AllTimesOf(paired, columns)))
    return paired;
  const JoinedTimeFound alone{{YearMonthDay}, {first}};
  const bool months =
      TrimBlankBytes(days.front()).substr(0, 4) != TrimBlankBytes(days.back()).substr(0, 4);
  const Times dates = AllTimesOf(alone, columns);
  if (months && (RisesDaily(dates) || RisesMonthly(dates))) return alone;
  const bool numbers = RisesAsNumbers(days);
  for (const TimePart part : {MonthDayYear, DayMonthYear}) {
    const JoinedTimeFound tried{{part}, {first}};
    const Times times = AllTimesOf(tried, columns);
    if (numbers ? months && RisesDaily(times) : Rises(times)) return tried;
  }
  return std::nullopt;
}

/// In one of the orders that a date with slashes has anyway.
bool RunsOnOtherwise(const std::vector<std::string_view>& texts) {
  return std::ranges::any_of(
      std::initializer_list<ColumnFormat>{ColumnFormat::DateMonthFirst, ColumnFormat::DateDayFirst},
      [&texts](ColumnFormat format) {
        Times times;
        for (const std::string_view text : texts) {
          const std::optional<double> day = ValueOfField(text, format);
          if (!day) return false;
          times.push_back(*day);
        }
        return RunsOn(times);
      });
}

std::optional<JoinedTimeFound> FindBetweenSlashes(Columns columns, std::size_t first) {
  const JoinedTimeFound days{{TimePart::YearMonthDay}, {first}};
  if (RunsOn(AllTimesOf(days, columns)) && !RunsOnOtherwise(columns[first])) return days;
  const JoinedTimeFound months{{TimePart::MonthYear}, {first}};
  const Times times = AllTimesOf(months, columns);
  const bool one_by_one =
      Rises(times) && std::ranges::adjacent_find(times, [](double one, double next) {
                        return next - one > kLongestMonth;
                      }) == times.end();
  return one_by_one ? std::optional(months) : std::nullopt;
}

}  // namespace

std::optional<JoinedTimeFound> FindShortDates(Columns columns, std::size_t first) {
  const auto& texts = columns[first];
  const auto all_hold = [&texts](auto is) {
    return std::ranges::all_of(texts,
                               [&is](std::string_view text) { return is(TrimBlankBytes(text)); });
  };
  if (texts.size() < kFewestRows) return std::nullopt;
  const JoinedTimeFound clock{{TimePart::Time}, {first}};
  if (IsDigitClock(texts, AllTimesOf(clock, columns))) return clock;
  if (all_hold([](std::string_view text) { return AreDigits(text, 6); })) {
    return FindSixDigits(columns, first);
  }
  const bool slashes =
      all_hold([](std::string_view text) { return text.size() >= 5 && text[2] == '/'; });
  return slashes ? FindBetweenSlashes(columns, first) : std::nullopt;
}

}  // namespace tarnwick
