#include "data/fields/field_value.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/number_text.h"
#include "data/fields/factor_text.h"
#include "data/fields/si_unit.h"
#include "data/fields/text_fields.h"
#include "data/fields/unit_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestGroupedNumber = 400;

std::optional<double> Finite(std::optional<double> value) {
  return value && std::isfinite(*value) ? value : std::nullopt;
}

/// The mark between day, month and year where these are written with dashes, or with colons: "01:05:2019". NUL where neither is
/// so.
char MarkOfDate(std::string_view text) {
  constexpr std::size_t kWithColons = 10;  // "hh:mm:ss" is a time
  if (text.size() == kWithColons && text[2] == ':' && text[5] == ':') return ':';
  return text.find('-') != text.npos ? '-' : '\0';
}

/// Also "20240314", the beginning of an interval, and "3-4-2024 10:00" as "3/4/2024 10:00": day and month before the year are
/// written with dashes too.
std::optional<double> ParseDayInOrder(std::string_view text, SlashDate order) {
  if (const std::optional<double> day = ParseDay(text, order)) return day;
  if (const std::optional<double> day = ParseCompactDay(text)) return day;
  const std::string_view beginning = BeginningOfInterval(text);
  if (!beginning.empty()) return ParseDay(beginning, order);
  const char mark = MarkOfDate(text);
  if (mark == '\0') return std::nullopt;
  const std::size_t first = text.find(mark);
  if (first == text.npos || first == 0 || first > 2 || text.size() > 64) return std::nullopt;
  const std::size_t second = text.find(mark, first + 1);
  if (second > 5) return std::nullopt;
  std::string slashed(text);
  slashed[first] = slashed[second] = '/';
  return ParseDay(slashed, order);
}

/// At most three digits stand before the first point, exactly three behind every point.
bool GroupsThrees(std::string_view whole) {
  const std::size_t first_point = whole.find('.');
  if (first_point > 3 && IsDigit(whole[first_point - 4])) return false;
  for (std::size_t i = whole.find('.'); i != whole.npos; i = whole.find('.', i + 1)) {
    if (i == 0 || !IsDigit(whole[i - 1]) || whole.size() < i + 4) return false;
    for (std::size_t k = 1; k <= 3; ++k) {
      if (!IsDigit(whole[i + k])) return false;
    }
    if (whole.size() > i + 4 && IsDigit(whole[i + 4])) return false;
  }
  return true;
}

/// The marks that only some programs write in numbers, beside the text that stands for each in a plain number.
struct NumberMark {
  std::string_view written;
  char plain;  // '\0': groups digits
};
constexpr NumberMark kNumberMarks[] = {
    {"d", 'e'},
    {"D", 'e'},             // exponents of FORTRAN
    {"\xE2\x88\x92", '-'},  // the true minus sign
    {"'", '\0'},
    {" ", '\0'},
    {"\xC2\xA0", '\0'},  // the blanks that are not broken at, also in eight bits
    {"\xA0", '\0'},
    {"\xE2\x80\xAF", '\0'},
    {"\xE2\x80\x89", '\0'},
    {"\xE2\x80\x99", '\0'},  // the apostrophe of typography
};

const NumberMark* MarkAt(std::string_view text) {
  for (const NumberMark& mark : kNumberMarks) {
    if (text.starts_with(mark.written)) return &mark;
  }
  return nullptr;
}

/// "1'234.5", "1 234.5", "1.5D+03" and the like as plain numbers are written; groups must have three digits. Nothing when
/// `text` holds no such mark, or something else.
std::optional<std::string> PlainlyWritten(std::string_view text) {
  constexpr std::string_view kOrdinary = "0123456789.,+-eE";
  const auto begins_mark = [](char c) {
    return c == 'd' || c == 'D' || c == '\'' || c == ' ' || static_cast<unsigned char>(c) >= 0x80;
  };
  if (text.size() > kLongestGroupedNumber || std::none_of(text.begin(), text.end(), begins_mark))
    return std::nullopt;
  std::string plain;
  bool grouped = false;
  std::size_t digits = 0;  // since the last mark
  while (!text.empty()) {
    const char c = text.front();
    const NumberMark* const mark = MarkAt(text);
    const bool groups = mark != nullptr && mark->plain == '\0';
    if (mark == nullptr && kOrdinary.find(c) == kOrdinary.npos) return std::nullopt;
    if (!groups && !IsDigit(c) && grouped && digits != 3) return std::nullopt;
    if (groups && (digits == 0 || digits > 3 || (grouped && digits != 3))) return std::nullopt;
    grouped = groups || (grouped && IsDigit(c));
    digits = IsDigit(c) ? digits + 1 : 0;
    if (!groups) plain += mark != nullptr ? mark->plain : c;
    text.remove_prefix(mark != nullptr ? mark->written.size() : 1);
  }
  return !grouped || digits == 3 ? std::optional(plain) : std::nullopt;
}

/// What `parse` makes of the number, however it is written.
std::optional<double> ReadGrouped(std::string_view text,
                                  std::optional<double> (*parse)(std::string_view)) {
  if (const std::optional<double> value = parse(text)) return value;
  const std::optional<std::string> plain = PlainlyWritten(text);
  return plain ? parse(*plain) : std::nullopt;
}

/// The plain blank groups nothing here: where no format asks for it, it may stand between two numbers.
std::optional<double> ReadNumber(std::string_view text) {
  if (const std::optional<double> value = ParseNumber(text)) return value;
  // "- 5.2": some write the sign in a column of its own.
  const bool signed_apart = text.starts_with("- ") || text.starts_with("+ ");
  if (signed_apart && text.size() < kLongestGroupedNumber) {
    const std::string_view rest = text.substr(text.find_first_not_of(' ', 1));
    return IsDigit(rest.front()) ? ParseNumber(text.front() + std::string(rest)) : std::nullopt;
  }
  return text.find(' ') == text.npos ? ReadGrouped(text, &ParseNumber) : std::nullopt;
}

/// The day number of a count of `per_day` since the beginning of 1970.
std::optional<double> UnixDay(std::string_view text, double per_day) {
  constexpr double kDayOf1970 = 25569;
  const std::optional<double> count = Finite(ReadNumber(text));
  if (!count) return std::nullopt;
  const double day = (*count + kDayOf1970 * per_day) / per_day;
  return IsCalendarDay(day) ? std::optional(day) : std::nullopt;
}

}  // namespace

namespace {

/// Zero is zero in any unit; of another number nobody knows what it is.
std::optional<double> InBaseUnit(std::string_view text) {
  const std::optional<NumberAndUnit> split = SplitUnit(text);
  if (!split || (split->unit.empty() && split->number != 0)) return std::nullopt;
  if (split->unit.empty()) return 0;
  const std::optional<PrefixedUnit> unit = WithoutPrefix(split->unit);
  return unit ? Finite(split->number * unit->factor) : std::nullopt;
}

}  // namespace

std::optional<double> ParseGroupedThousands(std::string_view text) {
  if (text.size() > kLongestGroupedNumber) return std::nullopt;
  std::string swapped(text);
  for (char& c : swapped) c = c == ',' ? '.' : c == '.' ? ',' : c;
  return ParseDecimalComma(swapped);
}

std::optional<double> ParseDecimalComma(std::string_view text) {
  if (text.find('.') == text.npos) return ParseNumber(text);
  if (text.size() > kLongestGroupedNumber) return std::nullopt;
  const std::size_t comma = text.find(',');
  const std::string_view whole = text.substr(0, comma);
  const std::string_view rest = comma == text.npos ? std::string_view() : text.substr(comma);
  if (rest.find('.') != rest.npos || !GroupsThrees(whole)) return std::nullopt;
  std::string plain;
  for (const char c : text) {
    if (c != '.') plain += c;
  }
  return ParseNumber(plain);
}

std::optional<double> ValueOfField(std::string_view text, ColumnFormat format) {
  text = TrimBlankBytes(text);
  switch (format) {
    case ColumnFormat::Number:
      return Finite(ReadNumber(text));
    case ColumnFormat::DecimalComma:
      return Finite(ReadGrouped(text, &ParseDecimalComma));
    case ColumnFormat::GroupedThousands:
      return Finite(ReadGrouped(text, &ParseGroupedThousands));
    case ColumnFormat::DateTime:
    case ColumnFormat::TimeGoingOn:
    case ColumnFormat::DateMonthFirst:
      return ParseDayInOrder(text, SlashDate::MonthFirst);
    case ColumnFormat::DateDayFirst:
      return ParseDayInOrder(text, SlashDate::DayFirst);
    case ColumnFormat::NumberWithUnit: {
      const std::optional<NumberAndUnit> split = SplitUnit(text);
      return split ? std::optional(split->number) : std::nullopt;
    }
    case ColumnFormat::ScaledUnit:
      return InBaseUnit(text);
    case ColumnFormat::Uncertainty: {
      const std::optional<NumberAndUnit> split = SplitUnit(text);
      return split ? split->uncertainty : std::nullopt;
    }
    case ColumnFormat::Factor:
      return Finite(ValueWithFactor(text));
    case ColumnFormat::UnixSeconds:
      return UnixDay(text, 86'400);
    case ColumnFormat::UnixMilliseconds:
      return UnixDay(text, 86'400'000);
    case ColumnFormat::Automatic:
      break;
  }
  // A value outside the list comes from a damaged file; it reads like the automatic format.
  if (const std::optional<double> number = ReadNumber(text)) return Finite(number);
  const std::string_view beginning = BeginningOfInterval(text);
  return ParseDay(beginning.empty() ? text : beginning);
}

}  // namespace tarnwick
