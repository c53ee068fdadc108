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

/// A date and time, the zone behind a blank or not; "1-1-1 0:0:0" has no leading zeros.
std::optional<double> Moment(std::string_view text) {
  if (const std::optional<double> day = ParseDay(text)) return day;
  const std::size_t blank = text.rfind(' ');
  if (blank == text.npos) return std::nullopt;
  const std::string joined = std::string(text.substr(0, blank)) + std::string(text.substr(blank + 1));
  return ParseDay(joined);
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
