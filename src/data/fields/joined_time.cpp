#include "data/fields/joined_time.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

constexpr int kYearOfNone = 2001;
constexpr double kSecondsPerDay = 86400;
constexpr double kHoursPerDay = 24;

enum Unit : unsigned {
  kYear = 1,
  kMonth = 2,
  kDay = 4,
  kHour = 8,
  kMinute = 16,
  kSecond = 32,
  kHalf = 64
};

struct PartRow {
  TimePart part;
  std::string_view name;
  unsigned units;  // what it says of the time
};
constexpr PartRow kParts[] = {
    {TimePart::Date, "Date", kYear | kMonth | kDay},
    {TimePart::Time, "Time", kHour | kMinute | kSecond},
    {TimePart::Year, "Year", kYear},
    {TimePart::Month, "Month", kMonth},
    {TimePart::Day, "Day", kDay},
    {TimePart::DayOfYear, "DayOfYear", kMonth | kDay},
    {TimePart::Hour, "Hour", kHour},
    {TimePart::Minute, "Minute", kMinute},
    {TimePart::Second, "Second", kSecond},
    {TimePart::HourMinute, "HourMinute", kHour | kMinute},
    {TimePart::YearMonth, "YearMonth", kYear | kMonth},
    {TimePart::Quarter, "Quarter", kMonth},
    {TimePart::Week, "Week", kMonth | kDay},
    {TimePart::AmPm, "AmPm", kHalf},
    {TimePart::YearWeek, "YearWeek", kYear | kMonth | kDay},
    {TimePart::YearQuarter, "YearQuarter", kYear | kMonth},
    {TimePart::YearMonthDay, "YearMonthDay", kYear | kMonth | kDay},
    {TimePart::MonthDayYear, "MonthDayYear", kYear | kMonth | kDay},
    {TimePart::DayMonthYear, "DayMonthYear", kYear | kMonth | kDay},
    {TimePart::MonthYear, "MonthYear", kYear | kMonth},
};

const PartRow& RowOf(TimePart part) {
  return kParts[static_cast<std::size_t>(part)];
}

enum class HalfOfDay { BeforeNoon, AfterNoon };

/// The parts as far as they are read. Fractions of days and hours go over into seconds.
struct Sum {
  std::optional<double> date;
  std::optional<int> year;
  int month = 1;
  int day = 1;
  std::optional<int> day_of_year;
  std::optional<int> week;
  bool has_day = false;  // a month or day, if no year
  double seconds = 0;
  std::optional<HalfOfDay> half;
};

/// "2000" of "2000/01", "2000-01" and "2000/2001": of a year that begins within one and ends within the next.
std::string_view FirstOfTwoYears(std::string_view text) {
  constexpr std::size_t kDigits = 4;
  text = TrimBlankBytes(text);
  const bool pair = text.size() > kDigits && (text[kDigits] == '/' || text[kDigits] == '-');
  if (!pair) return text;
  const std::string_view first = text.substr(0, kDigits), second = text.substr(kDigits + 1);
  const std::optional<std::int32_t> year = ParseInteger(first), next = ParseInteger(second);
  const bool follows = year && next &&
                       ((second.size() == 2 && *next == (*year + 1) % 100) ||
                        (second.size() == kDigits && *next == *year + 1));
  return follows ? first : text;
}

std::optional<int> YearOf(std::string_view text) {
  text = FirstOfTwoYears(text);
  const std::optional<double> value = ValueOfField(text, ColumnFormat::Number);
  if (!value || *value != std::floor(*value) || *value < 0 || *value > 9999) return std::nullopt;
  const auto year = static_cast<int>(*value);
  if (TrimBlankBytes(text).size() <= 2) return year + (year >= 69 ? 1900 : 2000);
  return year > 0 ? std::optional(year) : std::nullopt;
}

/// A number from `from` to less than `below`.
std::optional<double> InRange(std::string_view text, double from, double below) {
  const std::optional<double> value = ValueOfField(text, ColumnFormat::Number);
  return value && *value >= from && *value < below ? value : std::nullopt;
}

/// The seconds of "5", "1205", "120506" and "120506.5".
std::optional<double> SecondsOfDigits(std::string_view text, bool seconds_may_stand) {
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view digits = text.substr(0, point);
  const bool all_digits = std::all_of(digits.begin(), digits.end(), IsDigit);
  const bool has_seconds = digits.size() > 4;
  if (!all_digits || digits.empty() || digits.size() > 6) return std::nullopt;
  const std::optional<double> value = ParseNumber(text);
  if (!value || (has_seconds && !seconds_may_stand)) return std::nullopt;
  if (!has_seconds && *value != std::floor(*value)) return std::nullopt;
  const double pairs = has_seconds ? *value : *value * 100;
  const double hour = std::floor(pairs / 10000);
  const double minute = std::floor(pairs / 100) - hour * 100;
  const double second = pairs - hour * 10000 - minute * 100;
  if (minute >= 60 || second >= 60) return std::nullopt;
  return hour * 3600 + minute * 60 + second;
}

/// "18.00.00", which no number is.
std::optional<double> SecondsBetweenPoints(std::string_view text) {
  constexpr std::string_view kForm = "00.00.00";
  const auto fits = [](char c, char form) { return form == '0' ? IsDigit(c) : c == form; };
  if (!std::ranges::equal(text, kForm, fits)) return std::nullopt;
  std::string digits(text);
  std::erase(digits, '.');
  return SecondsOfDigits(digits, true);
}

std::optional<double> SecondsOfTime(std::string_view text) {
  if (const std::optional<double> seconds = SecondsBetweenPoints(text)) return seconds;
  if (const std::optional<double> seconds = SecondsOfDigits(text, true)) return seconds;
  const std::size_t colon = text.find(':');
  // A date stands before its time's colon with more than an hour's two digits.
  if (colon > 2) return std::nullopt;
  const std::optional<double> day = ParseDay(text);
  return day ? std::optional(std::round(*day * kSecondsPerDay * 1e6) / 1e6) : std::nullopt;
}

bool AddSeconds(std::optional<double> value, double seconds_each, Sum& sum) {
  if (value) sum.seconds += *value * seconds_each;
  return value.has_value();
}

bool AddDay(std::optional<double> value, std::optional<int>& whole, Sum& sum) {
  if (!value) return false;
  whole = static_cast<int>(*value);
  sum.has_day = true;
  sum.seconds += (*value - std::floor(*value)) * kSecondsPerDay;
  return true;
}

/// The first month of the period of so many months that `number` counts from 1.
bool AddMonth(std::optional<double> number, int months, Sum& sum) {
  if (!number || *number != std::floor(*number)) return false;
  sum.month = (static_cast<int>(*number) - 1) * months + 1;
  sum.has_day = true;
  return true;
}

/// A number, perhaps behind "M", or a month's name or its first letters.
std::optional<double> MonthNumber(std::string_view text) {
  text = TrimBlankBytes(text);
  if (text.size() == 3 && text.front() == 'M' && IsDigit(text[1])) text.remove_prefix(1);
  if (text.empty() || !IsLetter(text.front())) return InRange(text, 1, 13);
  const std::optional<double> day = ParseDay(std::string(text) + " 2001");
  return day ? std::optional<double>(SplitDay(*day).month) : std::nullopt;
}

bool AddWeek(std::optional<double> week, Sum& sum) {
  if (!week || *week != std::floor(*week)) return false;
  sum.week = static_cast<int>(*week);
  return true;
}

/// The Monday of the week.
std::optional<double> DateOfWeek(int year, int week) {
  return ParseDay(std::to_string(year) + (week < 10 ? "-W0" : "-W") + std::to_string(week));
}

/// The last two of six digits, the first of which are the year, or what stands behind the year and a colon or a dash; nothing
/// where there is none.
std::string_view BehindYear(std::string_view text, Sum& sum) {
  constexpr std::size_t kYearDigits = 4;
  text = TrimBlankBytes(text);
  if (text.size() > kYearDigits + 1 && (text[kYearDigits] == ':' || text[kYearDigits] == '-')) {
    sum.year = YearOf(text.substr(0, kYearDigits));
    return text.substr(kYearDigits + 1);
  }
  if (!AreDigits(text, 6)) return {};
  sum.year = YearOf(text.substr(0, 4));
  return text.substr(4);
}

bool AddYearMonth(std::string_view text, Sum& sum) {
  const std::optional<double> month = InRange(BehindYear(text, sum), 1, 13);
  if (!month || !sum.year) return false;
  sum.month = static_cast<int>(*month);
  sum.has_day = true;
  return true;
}

/// The pairs of digits of "891101" or "89/11/01", and of "11/89"; empty for all else.
std::vector<std::string_view> PairsOf(std::string_view text) {
  text = TrimBlankBytes(text);
  const bool marked = text.size() == 5 || text.size() == 8;
  if (!marked && text.size() != 6) return {};
  std::vector<std::string_view> pairs;
  for (std::size_t at = 0; at < text.size(); at += marked ? 3 : 2) {
    const std::string_view pair = text.substr(at, 2);
    const bool mark = at == 0 || !marked || text[at - 1] == '/' || text[at - 1] == '-';
    if (!mark || !AreDigits(pair)) return {};
    pairs.push_back(pair);
  }
  return pairs;
}

/// Which of the pairs are year, month and day.
struct PairOrder {
  std::size_t year, month, day;
};

bool AddPairs(std::string_view text, PairOrder order, Sum& sum) {
  const std::vector<std::string_view> pairs = PairsOf(text);
  if (pairs.size() != 3) return false;
  const std::optional<double> month = InRange(pairs[order.month], 1, 13);
  const std::optional<double> day = InRange(pairs[order.day], 1, 32);
  sum.year = YearOf(pairs[order.year]);
  if (!month || !day || !sum.year) return false;
  sum.month = static_cast<int>(*month);
  sum.day = static_cast<int>(*day);
  sum.has_day = true;
  return true;
}

bool AddMonthYear(std::string_view text, Sum& sum) {
  const std::vector<std::string_view> pairs = PairsOf(text);
  if (pairs.size() != 2) return false;
  sum.year = YearOf(pairs[1]);
  return sum.year && AddMonth(InRange(pairs[0], 1, 13), 1, sum);
}

/// "AM", "p.m.", "a".
std::optional<HalfOfDay> HalfOf(std::string_view text) {
  std::string letters = LowerAscii(TrimBlankBytes(text));
  std::erase(letters, '.');
  if (letters == "am" || letters == "a") return HalfOfDay::BeforeNoon;
  if (letters == "pm" || letters == "p") return HalfOfDay::AfterNoon;
  return std::nullopt;
}

/// Turns hours of twelve to those of the day; twelve begins a half. Times told by 24 hours beside a true half stay. False when
/// the time does not lie in its half.
bool ApplyHalf(Sum& sum) {
  constexpr double kHalfDay = kSecondsPerDay / 2;
  constexpr double kThirteen = kHalfDay + 3600;
  if (sum.half == HalfOfDay::AfterNoon && sum.seconds < kHalfDay) sum.seconds += kHalfDay;
  if (sum.half != HalfOfDay::BeforeNoon) return true;
  if (sum.seconds >= kHalfDay && sum.seconds < kThirteen) sum.seconds -= kHalfDay;
  return sum.seconds < kHalfDay;
}

bool Add(TimePart part, std::string_view text, ColumnFormat date_format, Sum& sum) {
  std::optional<int> whole;
  switch (part) {
    case TimePart::Date:
      sum.date = ValueOfField(text, date_format);
      return sum.date.has_value();
    case TimePart::Time:
      return AddSeconds(SecondsOfTime(text), 1, sum);
    case TimePart::HourMinute:
      return AddSeconds(SecondsOfDigits(text, false), 1, sum);
    case TimePart::Year:
      sum.year = YearOf(text);
      return sum.year.has_value();
    case TimePart::YearMonth:
      return AddYearMonth(text, sum);
    case TimePart::Month:
      return AddMonth(MonthNumber(text), 1, sum);
    case TimePart::Quarter:
      return AddMonth(InRange(text, 1, 5), 3, sum);
    case TimePart::Week:
      return AddWeek(InRange(text, 1, 54), sum);
    case TimePart::Day:
      if (!AddDay(InRange(text, 1, 32), whole, sum)) return false;
      sum.day = *whole;
      return true;
    case TimePart::DayOfYear:
      return AddDay(InRange(text, 1, 367), sum.day_of_year, sum);
    case TimePart::Hour:
      return AddSeconds(InRange(text, 0, std::nextafter(kHoursPerDay, 25)), 3600, sum);
    case TimePart::Minute:
      return AddSeconds(InRange(text, 0, 60), 60, sum);
    case TimePart::Second:
      return AddSeconds(InRange(text, 0, 60), 1, sum);
    case TimePart::YearWeek:
      return AddWeek(InRange(BehindYear(text, sum), 1, 54), sum);
    case TimePart::YearQuarter:
      return AddMonth(InRange(BehindYear(text, sum), 1, 5), 3, sum) && sum.year.has_value();
    case TimePart::YearMonthDay:
      return AddPairs(text, {.year = 0, .month = 1, .day = 2}, sum);
    case TimePart::MonthDayYear:
      return AddPairs(text, {.year = 2, .month = 0, .day = 1}, sum);
    case TimePart::DayMonthYear:
      return AddPairs(text, {.year = 2, .month = 1, .day = 0}, sum);
    case TimePart::MonthYear:
      return AddMonthYear(text, sum);
    case TimePart::AmPm:
      sum.half = HalfOf(text);
      return sum.half.has_value();
  }
  return false;
}

std::optional<double> DateOf(const Sum& sum) {
  if (sum.date) return *sum.date;
  if (sum.week) return sum.year ? DateOfWeek(*sum.year, *sum.week) : std::nullopt;
  if (!sum.year && !sum.has_day) return 0;
  const int year = sum.year.value_or(kYearOfNone);
  if (!sum.day_of_year) {
    if (sum.day > DaysInMonth(year, sum.month)) return std::nullopt;
    return JoinDay({.year = year, .month = sum.month, .day = sum.day});
  }
  if (*sum.day_of_year == 366 && DaysInMonth(year, 2) == 28) return std::nullopt;
  return JoinDay({.year = year, .month = 1, .day = *sum.day_of_year});
}

bool IsDateFormat(ColumnFormat format) {
  return format == ColumnFormat::DateTime || format == ColumnFormat::DateDayFirst ||
         format == ColumnFormat::DateMonthFirst;
}

bool SayTimes(std::span<const TimePart> parts) {
  return std::any_of(parts.begin(), parts.end(),
                     [](TimePart part) { return (RowOf(part).units & (kHour | kMinute)) != 0; });
}

}  // namespace

bool AreCompatible(std::span<const TimePart> parts) {
  unsigned said = 0;
  for (const TimePart part : parts) {
    if ((said & RowOf(part).units) != 0) return false;
    said |= RowOf(part).units;
  }
  return !parts.empty();
}

std::optional<JoinedTime> JoinedTime::Parse(std::string_view text) {
  JoinedTime joined;
  std::vector<TimePart> parts;
  for (;;) {
    const std::size_t end = std::min(text.find('\t'), text.size());
    const std::string_view entry = text.substr(0, end);
    const std::size_t colon = std::min(entry.find(':'), entry.size());
    const auto* const row =
        std::find_if(std::begin(kParts), std::end(kParts),
                     [&](const PartRow& part) { return part.name == entry.substr(0, colon); });
    if (row == std::end(kParts) || colon + 1 >= entry.size()) return std::nullopt;
    joined.parts.push_back({row->part, std::string(entry.substr(colon + 1))});
    parts.push_back(row->part);
    if (end == text.size()) break;
    text.remove_prefix(end + 1);
  }
  return AreCompatible(parts) ? std::optional(joined) : std::nullopt;
}

std::string JoinedTime::Text() const {
  std::string text;
  for (const Part& part : parts) {
    if (!text.empty()) text += '\t';
    text.append(RowOf(part.part).name).append(":").append(part.column);
  }
  return text;
}

std::optional<double> JoinTime(std::span<const TimePart> parts,
                               std::span<const std::string_view> texts, ColumnFormat date_format) {
  const ColumnFormat format = IsDateFormat(date_format) ? date_format : ColumnFormat::DateTime;
  Sum sum;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i >= texts.size() || !Add(parts[i], TrimBlankBytes(texts[i]), format, sum)) {
      return std::nullopt;
    }
  }
  if (!ApplyHalf(sum)) return std::nullopt;
  const std::optional<double> date = DateOf(sum);
  // Only a time turned to UTC may leave its day.
  const bool leaves_day = sum.seconds < 0 || sum.seconds > kSecondsPerDay;
  if (!date || (leaves_day && std::none_of(texts.begin(), texts.end(), &HasZone))) {
    return std::nullopt;
  }
  const double day = sum.date && SayTimes(parts) ? std::floor(*date) : *date;
  // One division, as in JoinDay.
  return (day * kSecondsPerDay + sum.seconds) / kSecondsPerDay;
}

}  // namespace tarnwick
