// The day number of a text.
#include <charconv>
#include <cstddef>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr int kMostHoursOfDay = 23;
constexpr int kMostHoursPassed = 9999;
constexpr std::size_t kShortName = 3;

struct Digits {
  int value = 0;
  std::size_t size = 0;  // 0: none, or more than four
};

class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }
  char Next() const { return rest_.empty() ? '\0' : rest_.front(); }
  bool Take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool TakeWord(std::string_view word) {
    if (LowerAscii(rest_.substr(0, word.size())) != word) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  bool SkipBlanks() {
    const std::size_t before = rest_.size();
    while (Take(' ') || Take('\t')) {
    }
    return rest_.size() != before;
  }
  Digits TakeDigits() {
    Digits digits;
    while (digits.size < rest_.size() && IsDigit(rest_[digits.size])) ++digits.size;
    if (digits.size > 4) return {};
    std::from_chars(rest_.data(), rest_.data() + digits.size, digits.value);
    rest_.remove_prefix(digits.size);
    return digits;
  }
  /// A month's name, whole or its first letters; no digits when none stands there.
  Digits TakeMonthName() {
    if (!IsLetter(Next())) return {};
    for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
      const std::string name = LowerAscii(kMonthNames[i]);
      if (!TakeWord(name) && !TakeWord(std::string_view(name).substr(0, kShortName))) continue;
      return {static_cast<int>(i) + 1, 2};
    }
    return {};
  }
  /// The value of ".123" or ",123"; nothing when neither a mark nor digits stand there.
  std::optional<double> TakeFraction() {
    if (Next() != '.' && Next() != ',') return 0;
    std::size_t size = 1;
    while (size < rest_.size() && IsDigit(rest_[size])) ++size;
    const std::optional<double> value = ParseNumber(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return value;
  }

 private:
  std::string_view rest_;
};

std::optional<int> FullYear(const Digits& digits) {
  if (digits.size == 4 && digits.value > 0) return digits.value;
  if (digits.size == 2) return digits.value + (digits.value >= 69 ? 1900 : 2000);
  return std::nullopt;
}

std::optional<double> DayOf(std::optional<int> year, const Digits& month, const Digits& day) {
  if (!year || month.size == 0 || month.size > 2 || day.size == 0 || day.size > 2) {
    return std::nullopt;
  }
  if (month.value < 1 || month.value > 12 || day.value < 1 ||
      day.value > DaysInMonth(*year, month.value)) {
    return std::nullopt;
  }
  return JoinDay({.year = *year, .month = month.value, .day = day.value});
}

// A date whose first number is read already.
std::optional<double> TakeDate(Scanner& scanner, const Digits& first, SlashDate slash_date) {
  const char separator = scanner.Next();
  scanner.Take(separator);
  const Digits named = scanner.TakeMonthName();
  const Digits second = named.size > 0 ? named : scanner.TakeDigits();
  if (second.size == 0 || !scanner.Take(separator)) return std::nullopt;
  const Digits third = scanner.TakeDigits();
  if (named.size > 0 && first.size <= 2) return DayOf(FullYear(third), named, first);
  if (separator == ' ') return std::nullopt;
  const bool year_first = first.size == 4 && separator != '.';
  if (year_first) return DayOf(FullYear(first), second, third);
  if (separator == '-') return std::nullopt;
  const bool day_first = separator == '.' || slash_date == SlashDate::DayFirst;
  return day_first ? DayOf(FullYear(third), second, first) : DayOf(FullYear(third), first, second);
}

// The hour on the 24-hour clock, am and pm taken.
std::optional<int> TakeHalfOfDay(Scanner& scanner, int hour) {
  scanner.SkipBlanks();
  const bool morning = scanner.TakeWord("am");
  const bool evening = !morning && scanner.TakeWord("pm");
  if (!morning && !evening) return hour;
  if (hour < 1 || hour > 12) return std::nullopt;
  return hour % 12 + (evening ? 12 : 0);
}

bool TakeZone(Scanner& scanner) {
  if (scanner.Take('Z') || scanner.Take('z')) return true;
  if (!scanner.Take('+') && !scanner.Take('-')) return true;
  const Digits hours = scanner.TakeDigits();
  if (hours.size == 4) return true;
  return hours.size == 2 && (!scanner.Take(':') || scanner.TakeDigits().size == 2);
}

// The seconds of the day, of a time whose hour is read already; to the end of the text.
std::optional<double> TakeTime(Scanner& scanner, const Digits& hours, int most_hours) {
  if (hours.size == 0 || hours.value > most_hours || !scanner.Take(':')) return std::nullopt;
  const Digits minutes = scanner.TakeDigits();
  if (minutes.size != 2 || minutes.value > 59) return std::nullopt;
  Digits seconds;
  std::optional<double> fraction = 0;
  if (scanner.Take(':')) {
    seconds = scanner.TakeDigits();
    if (seconds.size != 2 || seconds.value > 59) return std::nullopt;
    fraction = scanner.TakeFraction();
  }
  const std::optional<int> hour = TakeHalfOfDay(scanner, hours.value);
  if (!fraction || !hour || !TakeZone(scanner) || !scanner.AtEnd()) return std::nullopt;
  return *hour * 3600 + minutes.value * 60 + seconds.value + *fraction;
}

}  // namespace

std::optional<double> ParseDay(std::string_view text, SlashDate slash_date) {
  Scanner scanner(TrimBlanks(text));
  const Digits first = scanner.TakeDigits();
  if (first.size == 0) return std::nullopt;
  double date = 0;
  Digits hours = first;
  int most_hours = kMostHoursPassed;
  const char separator = scanner.Next();
  if (separator == '-' || separator == '/' || separator == '.' || separator == ' ') {
    const std::optional<double> read = TakeDate(scanner, first, slash_date);
    if (!read || scanner.AtEnd()) return read;
    date = *read;
    if (!scanner.SkipBlanks() && !scanner.Take('T') && !scanner.Take('t')) return std::nullopt;
    hours = scanner.TakeDigits();
    most_hours = kMostHoursOfDay;
  }
  const std::optional<double> seconds = TakeTime(scanner, hours, most_hours);
  if (!seconds) return std::nullopt;
  // One division, as in JoinDay.
  return (date * kSecondsPerDay + *seconds) / kSecondsPerDay;
}

}  // namespace tarnwick
