#include "data/guess/date_columns.h"

#include <algorithm>
#include <functional>
#include <set>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/text_encoding.h"
#include "data/fields/joined_time.h"
#include "data/fields/text_fields.h"
#include "data/guess/found_times.h"
#include "data/guess/short_dates.h"
#include "data/guess/time_names.h"

namespace tarnwick {
namespace {

using Texts = std::vector<std::string_view>;
using Columns = std::span<const Texts>;

constexpr std::size_t kFewestRows = 3;
constexpr std::size_t kFewestDays = 8;  // where only their digits say so
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2100;

/// True when all rows give times, and several.
bool TellsTimes(const JoinedTimeFound& found, Columns columns) {
  const std::vector<double> times = AllTimesOf(found, columns);
  return times.size() >= kFewestRows &&
         std::ranges::adjacent_find(times, std::not_equal_to<>()) != times.end();
}

template <class Is>
bool All(const Texts& texts, Is is) {
  return !texts.empty() && std::ranges::all_of(texts, [&is](std::string_view text) {
    return is(TrimBlankBytes(text));
  });
}

bool IsWord(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, IsLetter);
}

bool IsClock(std::string_view text) {
  return text.find(':') != text.npos;
}

bool IsYear(std::string_view text) {
  return AreDigits(text, 4) && text >= "1900" && text <= "2100";
}

bool IsDayOfMonth(std::string_view text) {
  return AreDigits(text, 1) || AreDigits(text, 2);
}

/// A month in letters beside its day, the year and perhaps the time in the columns around.
std::optional<JoinedTimeFound> FindMonthInWords(Columns columns, std::size_t first) {
  using enum TimePart;
  const auto is = [columns](std::size_t column, auto kind) {
    return column < columns.size() && All(columns[column], kind);
  };
  JoinedTimeFound found;
  std::size_t next = first + 2;
  if (is(first, &IsWord) && is(first + 1, &IsDayOfMonth)) {
    found = {{Month, Day}, {first, first + 1}};
  } else if (is(first, &IsDayOfMonth) && is(first + 1, &IsWord)) {
    found = {{Day, Month}, {first, first + 1}};
  } else {
    return std::nullopt;
  }
  const auto take = [&](TimePart part, auto kind) {
    if (!is(next, kind)) return false;
    found.parts.push_back(part);
    found.columns.push_back(next++);
    return true;
  };
  const bool timed = take(Time, &IsClock);
  // A zone stands between the time and the year.
  if (timed && is(next, &IsWord)) ++next;
  if (!take(Year, &IsYear)) return std::nullopt;
  if (!timed) take(Time, &IsClock);
  return TellsTimes(found, columns) ? std::optional(found) : std::nullopt;
}

std::optional<double> DayOfDigits(std::string_view text) {
  const std::optional<double> day = ParseCompactDay(text);
  const int year = day ? SplitDay(*day).year : 0;
  return year >= kFirstYear && year <= kLastYear ? day : std::nullopt;
}

bool AreDays(const Texts& texts, std::size_t digits) {
  return All(texts, [digits](std::string_view text) {
    return AreDigits(text, digits) && DayOfDigits(text).has_value();
  });
}

/// Numbers that count something do not skip what no month has.
bool SpanMonths(const Texts& days) {
  std::set<std::string_view> months;
  std::set<std::string_view> different;
  for (const std::string_view day : days) {
    months.insert(TrimBlankBytes(day).substr(0, 6));
    different.insert(TrimBlankBytes(day));
  }
  return days.size() >= kFewestDays && months.size() > 1 && different.size() >= kFewestRows;
}

bool EndsWith(std::span<const std::string> names, std::size_t column, std::string_view word) {
  return column < names.size() && NameWords(names[column]).ends_with(word);
}

std::optional<JoinedTimeFound> FindDaysOfDigits(std::span<const std::string> names, Columns columns,
                                                std::size_t first) {
  using enum TimePart;
  JoinedTimeFound alone{{Date}, {first}};
  const bool long_enough = AreDays(columns[first], 12) || AreDays(columns[first], 14);
  if (long_enough) return TellsTimes(alone, columns) ? std::optional(alone) : std::nullopt;
  if (!AreDays(columns[first], 8)) return std::nullopt;
  const JoinedTimeFound pair{{Date, Time}, {first, first + 1}};
  const auto is_time = [](std::string_view text) { return AreDigits(text, 6); };
  const bool paired = EndsWith(names, first, "date") && EndsWith(names, first + 1, "time") &&
                      first + 1 < columns.size() && All(columns[first + 1], is_time);
  if (paired && TellsTimes(pair, columns)) return pair;
  const bool counts = first < names.size() &&
                      HasOneOf(NameWords(names[first]), {"id", "no", "number", "code", "serial"});
  const bool dated = !counts && SpanMonths(columns[first]) && TellsTimes(alone, columns);
  return dated ? std::optional(alone) : std::nullopt;
}

}  // namespace

std::optional<JoinedTimeFound> FindWrittenDate(std::span<const std::string> names, Columns columns,
                                               std::size_t first) {
  if (auto found = FindMonthInWords(columns, first)) return found;
  if (auto found = FindShortDates(columns, first)) return found;
  return FindDaysOfDigits(names, columns, first);
}

}  // namespace tarnwick
