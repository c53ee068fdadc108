#include "data/guess/time_names.h"

#include <algorithm>
#include <cstddef>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

struct NameRow {
  std::string_view name;
  TimePart part;
};
constexpr NameRow kNames[] = {
    {"yyyymmdd", TimePart::Date},
    {"ymd", TimePart::Date},
    {"mst", TimePart::Time},
    {"est", TimePart::Time},
    {"cst", TimePart::Time},
    {"pst", TimePart::Time},
    {"lst", TimePart::Time},
    {"utc", TimePart::Time},
    {"gmt", TimePart::Time},
    {"hms", TimePart::Time},
    {"hh mm", TimePart::Time},
    {"hh mm ss", TimePart::Time},
    {"hhmmss", TimePart::Time},
    {"clock", TimePart::Time},
    {"year", TimePart::Year},
    {"yr", TimePart::Year},
    {"yyyy", TimePart::Year},
    {"yy", TimePart::Year},
    {"month", TimePart::Month},
    {"mo", TimePart::Month},
    {"mon", TimePart::Month},
    {"mm", TimePart::Month},
    {"quarter", TimePart::Quarter},
    {"qtr", TimePart::Quarter},
    {"week", TimePart::Week},
    {"wk", TimePart::Week},
    {"mmwr year", TimePart::Year},
    {"mmwr week", TimePart::Week},
    {"day", TimePart::Day},
    {"dy", TimePart::Day},
    {"da", TimePart::Day},
    {"dd", TimePart::Day},
    {"day of month", TimePart::Day},
    {"dayofmonth", TimePart::Day},
    {"doy", TimePart::DayOfYear},
    {"jday", TimePart::DayOfYear},
    {"yday", TimePart::DayOfYear},
    {"julian day", TimePart::DayOfYear},
    {"day of year", TimePart::DayOfYear},
    {"hour", TimePart::Hour},
    {"hr", TimePart::Hour},
    {"hh", TimePart::Hour},
    {"minute", TimePart::Minute},
    {"min", TimePart::Minute},
    {"mn", TimePart::Minute},
    {"mi", TimePart::Minute},
    {"second", TimePart::Second},
    {"sec", TimePart::Second},
    {"ss", TimePart::Second},
    {"hhmm", TimePart::HourMinute},
    {"hrmn", TimePart::HourMinute},
    {"hour minute", TimePart::HourMinute},
};

bool HasWord(std::string_view words, std::string_view word) {
  const std::string padded = " " + std::string(words) + " ";
  return padded.find(" " + std::string(word) + " ") != padded.npos;
}

}  // namespace

std::string NameWords(std::string_view text) {
  std::string words;
  bool gap = false;
  for (const char c : LowerAscii(text)) {
    const bool of_word = IsLetter(c) || IsDigit(c);
    if (of_word && gap && !words.empty()) words += ' ';
    if (of_word) words += c;
    gap = !of_word;
  }
  return words;
}

bool HasOneOf(std::string_view words, std::initializer_list<std::string_view> sought) {
  return std::any_of(sought.begin(), sought.end(),
                     [words](std::string_view word) { return HasWord(words, word); });
}

std::optional<TimePart> TimePartOfName(std::string_view name, std::optional<TimePart> before) {
  const std::size_t bracket = std::min(name.find_first_of("([{"), name.size());
  const std::string words = NameWords(name.substr(0, bracket));
  if (words == "mm" && before == TimePart::Hour) return TimePart::Minute;
  // Elsewhere a height.
  if (words == "h" && (before == TimePart::Day || before == TimePart::DayOfYear)) {
    return TimePart::Hour;
  }
  for (const NameRow& row : kNames) {
    if (words == row.name) return row.part;
  }
  const bool date = HasWord(words, "date");
  const bool time = HasWord(words, "time");
  if (date != time) {
    // A time in seconds has passed; it is none of the day.
    const std::string unit = NameWords(name.substr(bracket));
    const bool passed = HasOneOf(unit, {"s", "sec", "secs", "seconds", "ms", "us", "min", "minutes",
                                        "h", "hr", "hours", "d"});
    if (date || !passed) return date ? TimePart::Date : TimePart::Time;
  }
  return std::nullopt;
}

bool HasNoName(std::span<const std::string> names, std::size_t column) {
  if (column >= names.size()) return true;
  const std::string_view name = TrimBlankBytes(names[column]);
  return name.empty() || name.front() == '#' || ParseNumber(name).has_value();
}

}  // namespace tarnwick
