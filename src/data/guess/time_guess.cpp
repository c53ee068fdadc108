#include "data/guess/time_guess.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"
#include "data/guess/date_columns.h"
#include "data/guess/found_times.h"
#include "data/guess/period_columns.h"
#include "data/guess/time_names.h"

namespace tarnwick {
namespace {

using Columns = std::span<const std::vector<std::string_view>>;

constexpr std::size_t kFewestRows = 3;
constexpr std::size_t kMostColumns = 64;
constexpr std::size_t kMostPartColumns = 8;
constexpr double kLessUneven = 0.01;
constexpr double kFirstYear = 1900;
constexpr double kFirstYearOfFour = 1700;  // of four digits beside a month
constexpr double kLastYear = 2100;

bool Holds(std::span<const TimePart> parts, TimePart part) {
  return std::find(parts.begin(), parts.end(), part) != parts.end();
}

bool HoldsOneOf(std::span<const TimePart> parts, std::initializer_list<TimePart> sought) {
  return std::any_of(sought.begin(), sought.end(),
                     [parts](TimePart part) { return Holds(parts, part); });
}

/// True for parts that leave no gap between the largest and the smallest of them, from a date down.
bool AreWhole(std::span<const TimePart> parts) {
  using enum TimePart;
  const bool month = Holds(parts, Month);
  const bool date = HoldsOneOf(parts, {Date, DayOfYear}) ||
                    (HoldsOneOf(parts, {Quarter, Week}) && Holds(parts, Year)) ||
                    (month && HoldsOneOf(parts, {Year, Day}));
  if (parts.size() < 2 || !date || (Holds(parts, Day) && !month)) return false;
  const bool time = HoldsOneOf(parts, {Time, HourMinute, Hour});
  const bool needs_day = time && !HoldsOneOf(parts, {Date, DayOfYear, Day});
  if (needs_day || (Holds(parts, Minute) && !Holds(parts, Hour))) return false;
  return !Holds(parts, Second) || HoldsOneOf(parts, {Minute, HourMinute});
}

/// The found with one more part, where it fits. A day of the year gives way to month and day, and is passed over behind them.
bool Extend(JoinedTimeFound& found, TimePart part, std::size_t column) {
  auto& parts = found.parts;
  if (part == TimePart::DayOfYear && Holds(parts, TimePart::Month)) return true;
  const auto day_of_year = std::find(parts.begin(), parts.end(), TimePart::DayOfYear);
  if (part == TimePart::Month && day_of_year != parts.end()) {
    found.columns.erase(found.columns.begin() + (day_of_year - parts.begin()));
    parts.erase(day_of_year);
  }
  parts.push_back(part);
  found.columns.push_back(column);
  if (AreCompatible(parts)) return true;
  parts.pop_back();
  found.columns.pop_back();
  return false;
}

std::size_t CountRead(const std::vector<std::optional<double>>& times) {
  return static_cast<std::size_t>(
      std::count_if(times.begin(), times.end(), [](const auto& time) { return time.has_value(); }));
}

/// True when every row has a time, later than that of the row before.
bool Rise(const std::vector<std::optional<double>>& times) {
  if (times.size() < kFewestRows || CountRead(times) != times.size()) return false;
  return std::adjacent_find(times.begin(), times.end(),
                            [](const auto& a, const auto& b) { return *a >= *b; }) == times.end();
}

/// Day first or month first: what reads more dates, else what makes times rise.
void ChooseDateFormat(JoinedTimeFound& found, Columns columns) {
  if (!Holds(found.parts, TimePart::Date)) return;
  const auto month_first = TimesOf(found, columns);
  found.date_format = ColumnFormat::DateDayFirst;
  const auto day_first = TimesOf(found, columns);
  if (month_first == day_first) {
    found.date_format = ColumnFormat::DateTime;
    return;
  }
  const std::size_t by_month = CountRead(month_first);
  const std::size_t by_day = CountRead(day_first);
  const bool by_day_only = Rise(day_first) && !Rise(month_first);
  if (by_month > by_day || (by_month == by_day && !by_day_only)) {
    found.date_format = ColumnFormat::DateMonthFirst;
  }
}

/// A column of digits under "time" is of hours when it goes to 24; up to 59 it may have passed as well as be minutes.
bool SettleDigits(JoinedTimeFound& found, Columns columns) {
  for (std::size_t i = 0; i < found.parts.size(); ++i) {
    if (found.parts[i] != TimePart::Time && found.parts[i] != TimePart::HourMinute) continue;
    double largest = 0;
    bool short_digits = true;
    for (const std::string_view field : columns[found.columns[i]]) {
      const std::string_view text = TrimBlankBytes(field);
      short_digits &= text.empty() || (AreDigits(text) && text.size() <= 2);
      if (short_digits) largest = std::max(largest, ParseNumber(text).value_or(0));
    }
    if (!short_digits) continue;
    if (largest > 24) return found.parts[i] == TimePart::HourMinute;
    found.parts[i] = TimePart::Hour;
  }
  return true;
}

/// True when a date has a time of its own, beside which a column of times says something else.
bool DatesHoldTimes(const JoinedTimeFound& found, Columns columns) {
  const auto date = std::find(found.parts.begin(), found.parts.end(), TimePart::Date);
  if (date == found.parts.end()) return false;
  const auto& texts = columns[found.columns[static_cast<std::size_t>(date - found.parts.begin())]];
  return std::any_of(texts.begin(), texts.end(), [&found](std::string_view text) {
    const std::optional<double> day = ValueOfField(text, found.date_format);
    return day && *day != std::floor(*day);
  });
}

bool AreAll(const std::vector<std::string_view>& texts, bool (*is_of_kind)(std::string_view)) {
  return !texts.empty() && std::all_of(texts.begin(), texts.end(), is_of_kind);
}

bool IsHalfOfDay(std::string_view text) {
  constexpr TimePart kHalf[] = {TimePart::AmPm};
  const std::string_view texts[] = {text};
  return JoinTime(kHalf, texts, ColumnFormat::DateTime).has_value();
}

/// Adds the neighbour of the hours that tells the half of the day in every row.
void AddHalf(JoinedTimeFound& found, Columns columns) {
  constexpr TimePart kHours[] = {TimePart::Time, TimePart::HourMinute, TimePart::Hour};
  const auto hours = std::ranges::find_first_of(found.parts, kHours);
  if (hours == found.parts.end() || Holds(found.parts, TimePart::AmPm)) return;
  const std::size_t last = std::ranges::max(found.columns);
  const std::size_t beside = found.columns[static_cast<std::size_t>(hours - found.parts.begin())];
  for (const std::size_t column : {beside + 1, last + 1}) {
    if (column >= columns.size() || !AreAll(columns[column], &IsHalfOfDay)) continue;
    found.parts.push_back(TimePart::AmPm);
    found.columns.push_back(column);
    return;
  }
}

/// True when nine of ten rows give a time.
bool ReadsAsTime(JoinedTimeFound& found, Columns columns) {
  if (!AreWhole(found.parts) || !SettleDigits(found, columns)) return false;
  AddHalf(found, columns);
  ChooseDateFormat(found, columns);
  if (DatesHoldTimes(found, columns)) return false;
  const auto times = TimesOf(found, columns);
  // A time at which everything happened is none to plot over.
  const bool stands = times.size() > 1 && times.front() &&
                      std::ranges::count(times, times.front()) == std::ssize(times);
  return !times.empty() && !stands && CountRead(times) * 10 >= times.size() * 9;
}

/// Columns whose names say that they make a time, from one on.
std::optional<JoinedTimeFound> FindByNames(std::span<const std::string> names, Columns columns,
                                           std::size_t first) {
  JoinedTimeFound found;
  std::optional<TimePart> before;
  for (std::size_t i = first; i < std::min(names.size(), columns.size()); ++i) {
    before = TimePartOfName(names[i], before);
    if (!before || !Extend(found, *before, i)) break;
  }
  while (found.parts.size() > 1) {
    JoinedTimeFound tried = found;
    if (ReadsAsTime(tried, columns)) return tried;
    // "min" may have been a minimum.
    found.parts.pop_back();
    found.columns.pop_back();
  }
  return std::nullopt;
}

bool IsCompactDate(std::string_view text) {
  text = TrimBlankBytes(text);
  const std::optional<double> day = AreDigits(text) ? ParseCompactDay(text) : std::nullopt;
  if (!day) return false;
  const int year = SplitDay(*day).year;
  return year >= kFirstYear && year <= kLastYear;
}

bool IsWrittenDate(std::string_view text) {
  return !ValueOfField(text, ColumnFormat::Number) && text.find(':') == text.npos &&
         (ValueOfField(text, ColumnFormat::DateMonthFirst) ||
          ValueOfField(text, ColumnFormat::DateDayFirst));
}

bool IsClockTime(std::string_view text) {
  const std::string_view parts[] = {text};
  constexpr TimePart kTime[] = {TimePart::Time};
  return text.find(':') != text.npos && JoinTime(kTime, parts, ColumnFormat::DateTime).has_value();
}

bool IsYear(std::string_view text) {
  const std::optional<double> year = ValueOfField(text, ColumnFormat::Number);
  return TrimBlankBytes(text).size() == 4 && year && *year == std::floor(*year) &&
         *year >= kFirstYearOfFour && *year <= kLastYear;
}

/// A date and a clock time side by side, told by how they are written; times may stand equal.
std::optional<JoinedTimeFound> FindWrittenPair(Columns columns, std::size_t first) {
  if (first + 1 >= columns.size()) return std::nullopt;
  JoinedTimeFound found{{TimePart::Date, TimePart::Time}, {first, first + 1}};
  if (AreAll(columns[first], &IsClockTime)) std::swap(found.columns[0], found.columns[1]);
  if (!AreAll(columns[found.columns[0]], &IsWrittenDate) ||
      !AreAll(columns[found.columns[1]], &IsClockTime)) {
    return std::nullopt;
  }
  AddHalf(found, columns);
  ChooseDateFormat(found, columns);
  const auto times = TimesOf(found, columns);
  const bool rising =
      CountRead(times) == times.size() && std::is_sorted(times.begin(), times.end());
  return rising ? std::optional(found) : std::nullopt;
}

/// Clock times of twelve hours beside their halves of the day, and perhaps the date right behind these or ahead of all.
std::optional<JoinedTimeFound> FindHalves(Columns columns, std::size_t first) {
  JoinedTimeFound found{{TimePart::Time}, {first}};
  if (!AreAll(columns[first], &IsClockTime)) return std::nullopt;
  AddHalf(found, columns);
  if (found.parts.size() < 2) return std::nullopt;
  for (const std::size_t column : {found.columns.back() + 1, first - 1}) {
    if (column >= columns.size() || !AreAll(columns[column], &IsWrittenDate)) continue;
    JoinedTimeFound dated = found;
    dated.parts.push_back(TimePart::Date);
    dated.columns.push_back(column);
    ChooseDateFormat(dated, columns);
    if (Rise(TimesOf(dated, columns))) return dated;
  }
  return found.parts.size() == 2 && Rise(TimesOf(found, columns)) ? std::optional(found)
                                                                  : std::nullopt;
}

/// "YYYYMM", "week" and the like over six digits.
std::optional<JoinedTimeFound> FindYearMonth(std::span<const std::string> names, Columns columns,
                                             std::size_t first) {
  if (first >= names.size()) return std::nullopt;
  std::string letters = LowerAscii(names[first]);
  std::erase_if(letters, [](char c) { return !IsLetter(c); });
  constexpr std::string_view kNames[] = {"yyyymm", "yearmonth", "yearmon", "yrmo"};
  constexpr std::string_view kWeekNames[] = {"yyyyww", "yearweek", "week", "isoweek", "epiweek"};
  if (std::ranges::find(kNames, letters) == std::end(kNames) &&
      std::ranges::find(kWeekNames, letters) == std::end(kWeekNames)) {
    return std::nullopt;
  }
  const bool weeks = std::ranges::find(kWeekNames, letters) != std::end(kWeekNames);
  JoinedTimeFound found{{weeks ? TimePart::YearWeek : TimePart::YearMonth}, {first}};
  const auto times = TimesOf(found, columns);
  return !times.empty() && CountRead(times) == times.size() ? std::optional(found) : std::nullopt;
}

/// Dates of eight and more digits that rise, or are named so, else with the time in the next column.
std::optional<JoinedTimeFound> FindCompact(std::span<const std::string> names, Columns columns,
                                           std::size_t first) {
  const std::string words = first < names.size() ? NameWords(names[first]) : std::string();
  const bool named = TimePartOfName(words, {}) == TimePart::Date ||
                     HasOneOf(words, {"date", "datetime", "time", "timestamp"});
  if ((!named && !HasNoName(names, first)) || !AreAll(columns[first], &IsCompactDate)) {
    return std::nullopt;
  }
  JoinedTimeFound alone{{TimePart::Date}, {first}};
  const auto dates = TimesOf(alone, columns);
  if (Rise(dates)) return alone;
  JoinedTimeFound pair{{TimePart::Date, TimePart::Time}, {first, first + 1}};
  const bool may_pair = first + 1 < columns.size() && HasNoName(names, first + 1);
  if (may_pair && SettleDigits(pair, columns) && Rise(TimesOf(pair, columns))) return pair;
  const bool days_repeat =
      dates.size() >= kFewestRows && dates.front() != dates.back() && std::ranges::is_sorted(dates);
  return named || days_repeat ? std::optional(alone) : std::nullopt;
}

/// How far the steps of rising times are from even, 0 to 1.
double Unevenness(const std::vector<std::optional<double>>& times) {
  double smallest = std::numeric_limits<double>::infinity();
  double largest = 0;
  for (std::size_t i = 1; i < times.size(); ++i) {
    smallest = std::min(smallest, *times[i] - *times[i - 1]);
    largest = std::max(largest, *times[i] - *times[i - 1]);
  }
  return 1 - smallest / largest;
}

/// True when no two columns change from each row to the next: of a time only the smallest does.
bool TurnLikeClocks(const JoinedTimeFound& found, Columns columns) {
  const auto turns_always = [columns](std::size_t column) {
    const auto& texts = columns[column];
    return std::adjacent_find(texts.begin(), texts.end()) == texts.end();
  };
  return std::count_if(found.columns.begin(), found.columns.end(), turns_always) <= 1;
}

/// True when `texts` tell how many days of their years the times have begun.
bool AreDaysOfYear(const std::vector<std::string_view>& texts,
                   const std::vector<std::optional<double>>& times) {
  if (texts.size() < times.size()) return false;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const double new_year = JoinDay({.year = SplitDay(*times[i]).year, .month = 1, .day = 1});
    if (ParseNumber(texts[i]) != std::floor(*times[i]) - new_year + 1) return false;
  }
  return true;
}

/// A day of the year begins anew with a year.
bool NeverFalls(const std::vector<std::string_view>& texts) {
  return std::ranges::is_sorted(
      texts, {}, [](std::string_view text) { return ParseNumber(text).value_or(0); });
}

/// Numbers without names as year, month and so on: the fewest columns by which the rows' times rise, of several readings the
/// one of the most even steps.
std::optional<JoinedTimeFound> FindNumbers(std::span<const std::string> names, Columns columns,
                                           std::size_t first) {
  using enum TimePart;
  static constexpr std::initializer_list<TimePart> kPatterns[] = {
      {Year, Month},
      {Year, DayOfYear},
      {Year, Month, Day},
      {Year, DayOfYear, Hour},
      {Year, DayOfYear, HourMinute},
      {Year, Month, Day, Hour},
      {Year, Month, Day, HourMinute},
      {Year, DayOfYear, Hour, Minute},
      {Year, DayOfYear, Month, Day},
      {Year, Month, Day, Hour, Minute},
      {Year, DayOfYear, Month, Day, Hour},
      {Year, DayOfYear, Month, Day, Hour, Minute},
      {Year, Month, Day, Hour, Minute, Second},
      {Year, DayOfYear, Month, Day, Hour, Minute, Second},
  };
  if (!AreAll(columns[first], &IsYear)) return std::nullopt;
  const auto& years = columns[first];
  const bool one_year = std::equal(years.begin() + 1, years.end(), years.begin());
  if (Rise(TimesOf({{Year}, {first}}, columns))) return std::nullopt;
  std::optional<JoinedTimeFound> best;
  double best_unevenness = 0;
  std::size_t best_size = kMostPartColumns;
  for (const auto& pattern : kPatterns) {
    // A year and a running number are no proof of a time within one year.
    if (pattern.size() > best_size || (pattern.size() == 2 && one_year)) continue;
    JoinedTimeFound tried;
    std::size_t column = first;
    for (const TimePart part : pattern) {
      if (column >= columns.size() || !HasNoName(names, column)) break;
      Extend(tried, part, column++);
    }
    if (column - first < pattern.size()) continue;
    const auto times = TimesOf(tried, columns);
    if (!Rise(times) || !TurnLikeClocks(tried, columns)) continue;
    const bool by_day_of_year = Holds(tried.parts, DayOfYear);
    if (by_day_of_year && !one_year && NeverFalls(columns[first + 1])) continue;
    const bool skips_day_of_year = pattern.size() > tried.parts.size();
    if (skips_day_of_year && !AreDaysOfYear(columns[first + 1], times)) continue;
    const double unevenness = Unevenness(times);
    if (best && unevenness > best_unevenness - kLessUneven) continue;
    best = tried;
    best_unevenness = unevenness;
    best_size = pattern.size();
  }
  return best;
}

/// "1 7 1972" or "7 1 1972" in three columns without names, by which the rows' times rise.
std::optional<JoinedTimeFound> FindDayAndYear(std::span<const std::string> names, Columns columns,
                                              std::size_t first) {
  using enum TimePart;
  if (first + 2 >= columns.size() || !AreAll(columns[first + 2], &IsYear)) return std::nullopt;
  std::optional<JoinedTimeFound> best;
  double best_unevenness = 0;
  for (const auto& parts : {std::vector{Day, Month, Year}, std::vector{Month, Day, Year}}) {
    const JoinedTimeFound tried{parts, {first, first + 1, first + 2}};
    const bool unnamed = std::ranges::all_of(
        tried.columns, [names](std::size_t column) { return HasNoName(names, column); });
    const auto times = TimesOf(tried, columns);
    if (!unnamed || !Rise(times) || !TurnLikeClocks(tried, columns)) continue;
    const double unevenness = Unevenness(times);
    if (best && unevenness >= best_unevenness) continue;
    best = tried;
    best_unevenness = unevenness;
  }
  return best;
}

/// "M01" to "M13" beside the year, as some offices count months; the thirteenth is the mean of the year.
std::optional<JoinedTimeFound> FindYearAndMonthCode(Columns columns, std::size_t first) {
  const auto is_code = [](std::string_view text) {
    text = TrimBlankBytes(text);
    return text.size() == 3 && text.front() == 'M' && AreDigits(text.substr(1));
  };
  if (first + 1 >= columns.size() || !AreAll(columns[first], &IsYear) ||
      !AreAll(columns[first + 1], is_code)) {
    return std::nullopt;
  }
  JoinedTimeFound found{{TimePart::Year, TimePart::Month}, {first, first + 1}};
  return ReadsAsTime(found, columns) ? std::optional(found) : std::nullopt;
}

struct YearSpan {
  int first;
  int last;
};

/// True when all lie in the years, counted `per_day` since 1970.
bool AllLieIn(std::span<const double> counts, YearSpan years, double per_day) {
  const double day_of_1970 = JoinDay({.year = 1970, .month = 1, .day = 1});
  const double from =
      (JoinDay({.year = years.first, .month = 1, .day = 1}) - day_of_1970) * per_day;
  const double to =
      (JoinDay({.year = years.last + 1, .month = 1, .day = 1}) - day_of_1970) * per_day;
  return std::all_of(counts.begin(), counts.end(),
                     [=](double count) { return count >= from && count < to; });
}

/// Whole numbers that rise by at most a month at a time; hourly times are still no multiples of a thousand seconds.
bool RunLikeTimes(std::span<const double> counts, double per_day) {
  constexpr double kMonth = 31;
  if (counts.size() < kFewestRows) return false;
  bool round = true;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] != std::floor(counts[i])) return false;
    round &= std::fmod(counts[i], per_day / 86'400 * 1000) == 0;
    const double step = i > 0 ? counts[i] - counts[i - 1] : 1;
    if (step <= 0 || step > kMonth * per_day) return false;
  }
  return !round;
}

}  // namespace

std::optional<JoinedTimeFound> FindJoinedTime(
    std::span<const std::string> names, std::span<const std::vector<std::string_view>> columns) {
  columns = columns.first(std::min(columns.size(), kMostColumns));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (auto found = FindYearMonth(names, columns, i)) return found;
    if (auto found = FindPeriods(columns, i)) return found;
    if (auto found = FindByNames(names, columns, i)) return found;
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (auto found = FindWrittenPair(columns, i)) return found;
    if (auto found = FindHalves(columns, i)) return found;
    if (auto found = FindCompact(names, columns, i)) return found;
    if (auto found = FindWrittenDate(names, columns, i)) return found;
    if (auto found = FindYearAndMonthCode(columns, i)) return found;
    if (auto found = FindDayAndYear(names, columns, i)) return found;
    if (auto found = FindNumbers(names, columns, i)) return found;
  }
  return std::nullopt;
}

std::optional<ColumnFormat> LooksLikeUnixTime(std::string_view name,
                                              std::span<const double> values) {
  std::vector<double> counts(values.begin(), values.end());
  std::erase_if(counts, [](double value) { return !std::isfinite(value); });
  if (counts.empty()) return std::nullopt;
  const std::string words = NameWords(name);
  const bool says_unix = HasOneOf(words, {"timestamp", "epoch", "unix", "unixtime", "posix"});
  const bool says_time = says_unix || HasOneOf(words, {"time", "ts", "utc"});
  const std::string names[] = {std::string(name)};
  const bool may_be_time =
      HasNoName(names, 0) || HasOneOf(words, {"date", "datetime", "when", "clock", "day", "s",
                                              "sec", "second", "seconds", "ms", "t", "x", "datum",
                                              "zeit", "heure", "fecha", "hora", "tempo", "temps"});
  if (!says_time && !may_be_time) return std::nullopt;
  const YearSpan years = says_unix ? YearSpan{1971, 2100} : YearSpan{1990, 2040};
  for (const auto& [format, per_day] : {std::pair(ColumnFormat::UnixSeconds, 86'400.0),
                                        std::pair(ColumnFormat::UnixMilliseconds, 86'400'000.0)}) {
    if (!AllLieIn(counts, years, per_day)) continue;
    return says_time || RunLikeTimes(counts, per_day) ? std::optional(format) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tarnwick
