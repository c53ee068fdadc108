#include "data/doubts/days_in_digits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tarnwick {
namespace {

constexpr std::size_t kFewest = 8;
constexpr std::int64_t kFirstYear = 1800, kLastYear = 2100;

bool IsDay(std::int64_t month, std::int64_t day) {
  constexpr std::int64_t kMonths = 12, kDays = 31;
  return month >= 1 && month <= kMonths && day >= 1 && day <= kDays;
}

bool IsYear(std::int64_t year) {
  return year >= kFirstYear && year <= kLastYear;
}

/// Two digits of a number, from 0 at its end.
std::int64_t Pair(std::int64_t number, int place) {
  for (; place > 0; --place) number /= 100;
  return number % 100;
}

struct Way {
  std::string_view written;
  std::size_t digits;
  bool (*reads)(std::int64_t number);
};

constexpr Way kWays[] = {
    {"YYYYMMDD", 8,
     [](std::int64_t n) { return IsYear(n / 10'000) && IsDay(Pair(n, 1), Pair(n, 0)); }},
    {"DDMMYYYY", 8,
     [](std::int64_t n) { return IsYear(n % 10'000) && IsDay(Pair(n, 2), Pair(n, 3)); }},
    {"YYMMDD", 6, [](std::int64_t n) { return IsDay(Pair(n, 1), Pair(n, 0)); }},
    {"DDMMYY", 6, [](std::int64_t n) { return IsDay(Pair(n, 1), Pair(n, 2)); }},
    {"MMDDYY", 6, [](std::int64_t n) { return IsDay(Pair(n, 2), Pair(n, 1)); }},
    {"YYYYMM", 6, [](std::int64_t n) { return IsYear(n / 100) && IsDay(Pair(n, 0), 1); }},
};

bool AreWholeAndDiffer(std::span<const double> values) {
  constexpr double kLargest = 1e9;
  const auto is_whole = [](double value) {
    return value >= 0 && value < kLargest && value == std::floor(value);
  };
  if (values.size() < kFewest || !std::ranges::all_of(values, is_whole)) return false;
  return std::ranges::any_of(values.subspan(1),
                             [&](double value) { return value != values.front(); });
}

/// Steps as even in minutes as they are not in numbers, over some full hour.
bool AreClocks(std::span<const double> values) {
  constexpr double kHours = 24, kMinutes = 60, kHundred = 100;
  const auto minutes = [](double value) {
    return std::floor(value / kHundred) * kMinutes + std::fmod(value, kHundred);
  };
  const auto is_clock = [](double value) {
    return value < kHours * kHundred && std::fmod(value, kHundred) < kMinutes;
  };
  if (!std::ranges::all_of(values, is_clock)) return false;
  std::size_t even = 0, full_hours = 0, proofs = 0;
  const double step = minutes(values[1]) - minutes(values[0]);
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double next = minutes(values[i]) - minutes(values[i - 1]);
    even += next == step || next == step - kHours * kMinutes ? 1 : 0;
    full_hours += next == step && values[i] - values[i - 1] != step ? 1 : 0;
    // "220 320 420" are hundreds.
    proofs += next < 0 || std::fmod(values[i] - values[i - 1], kHundred) != 0 ? 1 : 0;
  }
  return step > 0 && full_hours > 0 && proofs > 0 && 10 * even >= 9 * (values.size() - 1);
}

}  // namespace

std::string_view DaysInDigits(std::span<const double> values, std::span<const std::string> texts) {
  if (!AreWholeAndDiffer(values)) return {};
  for (const Way& way : kWays) {
    const auto has_digits = [&](const std::string& text) {
      return text.empty() || text.size() == way.digits;
    };
    const auto reads = [&](double value) { return way.reads(static_cast<std::int64_t>(value)); };
    if (std::ranges::all_of(texts, has_digits) && std::ranges::all_of(values, reads)) {
      return way.written;
    }
  }
  return AreClocks(values) ? "HHMM" : std::string_view();
}

}  // namespace tarnwick
