#include "sources/arrays/time_units.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/day_number.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

struct UnitRow {
  std::array<std::string_view, 5> names;
  double per_day;
};

constexpr UnitRow kUnits[] = {
    {{"days", "day", "d", "", ""}, 1},
    {{"hours", "hour", "hr", "hrs", "h"}, 24},
    {{"minutes", "minute", "min", "mins", ""}, 1440},
    {{"seconds", "second", "sec", "secs", "s"}, 86400},
    {{"milliseconds", "millisecond", "msec", "msecs", "ms"}, 86400e3},
    {{"microseconds", "microsecond", "us", "", ""}, 86400e6},
    {{"nanoseconds", "nanosecond", "ns", "", ""}, 86400e9},
};

/// "1900-1-1 0:0:0" with the zeros that dates are read with: four digits of the year, two of the others.
std::string WithZeros(std::string_view text) {
  std::string padded;
  std::size_t digits = 4;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789", i), text.size());
    const bool fraction = i > 0 && text[i - 1] == '.';
    if (end > i && !fraction) {
      padded.append(digits - std::min(digits, end - i), '0');
      digits = 2;
    }
    padded += text.substr(i, std::max(end, i + 1) - i);
    i = std::max(end, i + 1);
  }
  return padded;
}

/// A date and time, the zone behind a blank or not.
std::optional<double> Moment(std::string_view text) {
  for (const std::string& written : {std::string(text), WithZeros(text)}) {
    if (const std::optional<double> day = ParseDay(written)) return day;
    const std::size_t blank = written.rfind(' ');
    if (blank == written.npos) continue;
    const auto joined = ParseDay(written.substr(0, blank) + written.substr(blank + 1));
    if (joined) return joined;
  }
  return std::nullopt;
}

}  // namespace

std::optional<CountedTime> ParseCountedTime(std::string_view units) {
  constexpr std::string_view kSince = " since ";
  const std::string lower = LowerAscii(units);
  const std::size_t since = lower.find(kSince);
  if (since == lower.npos) return std::nullopt;
  const std::string_view unit = TrimBlanks(std::string_view(lower).substr(0, since));
  const auto* const row = std::ranges::find_if(kUnits, [&](const UnitRow& of) {
    return std::ranges::find(of.names, unit) != of.names.end();
  });
  if (unit.empty() || row == std::end(kUnits)) return std::nullopt;
  const std::optional<double> day = Moment(TrimBlanks(units.substr(since + kSince.size())));
  if (!day) return std::nullopt;
  return CountedTime{1 / row->per_day, *day};
}

bool IsCommonCalendar(std::string_view calendar) {
  constexpr std::array<std::string_view, 4> kNames = {"", "standard", "gregorian",
                                                      "proleptic_gregorian"};
  return std::ranges::find(kNames, LowerAscii(calendar)) != kNames.end();
}

}  // namespace tarnwick
