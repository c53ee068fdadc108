// The day number of a text.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/month_words.h"
#include "base/number_text.h"
#include "base/zone_place.h"

namespace tarnwick {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr int kMostHoursOfDay = 24;
constexpr int kMostHoursPassed = 9999;
constexpr int kMostHoursAhead = 14;  // clocks are up to UTC+14
constexpr std::size_t kShortName = 3;
constexpr std::size_t kCompactDate = 8;  // yyyymmdd

struct Digits {
  int value = 0;
  std::size_t size = 0;  // 0: none, or more than four
};

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// True when `name` begins with `word`, in whatever case.
bool Begins(std::string_view name, std::string_view word) {
  if (word.size() > name.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (Lower(name[i]) != Lower(word[i])) return false;
  }
  return true;
}

/// The digits that `text` begins with; five stand for any more.
Digits DigitsOf(std::string_view text) {
  Digits digits;
  while (digits.size < text.size() && digits.size < 5 && IsDigit(text[digits.size])) {
    digits.value = digits.value * 10 + (text[digits.size] - '0');
    ++digits.size;
  }
  return digits;
}

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
    if (!Begins(rest_, word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  bool SkipBlanks() {
    const std::size_t before = rest_.size();
    while (Take(' ') || Take('\t')) {
    }
    return rest_.size() != before;
  }
  /// Takes one such mark; a blank stands for a run of them.
  bool TakeSeparator(char separator) { return separator == ' ' ? SkipBlanks() : Take(separator); }
  Digits TakeDigits() {
    const Digits digits = DigitsOf(rest_);
    if (digits.size > 4) return {};
    rest_.remove_prefix(digits.size);
    return digits;
  }
  std::string_view TakeDigitRun() { return TakeRun<&IsDigit>(); }
  std::string_view TakeLetters() { return TakeRun<&IsLetter>(); }
  /// Behind the place that stands here, in brackets or not; false without one.
  bool SkipPlace() {
    const std::size_t size = LengthOfZonePlace(rest_);
    rest_.remove_prefix(size);
    return size > 0;
  }
  /// The place from 1 of a name that stands here, whole or its first letters.
  Digits TakeName(std::span<const std::string_view> names) {
    Scanner behind = *this;
    const std::string_view word = behind.TakeRun<&IsLetter>();
    if (word.size() < kShortName) return {};
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (Lower(names[i].front()) != Lower(word.front()) || !Begins(names[i], word)) continue;
      *this = behind;
      return {static_cast<int>(i) + 1, 2};
    }
    return {};
  }
  /// The value of ".123" or ",123", or of ":123" as some loggers write milliseconds; nothing when no digits stand behind
  /// the mark.
  std::optional<double> TakeFraction() {
    constexpr std::size_t kMilliseconds = 3;
    Scanner behind = *this;
    if (behind.Take(':') && behind.TakeDigitRun().size() == kMilliseconds) {
      const Digits digits = DigitsOf(rest_.substr(1, kMilliseconds));
      *this = behind;
      return digits.value / 1000.0;
    }
    if (Next() != '.' && Next() != ',') return 0;
    std::size_t size = 1;
    while (size < rest_.size() && IsDigit(rest_[size])) ++size;
    const std::optional<double> value = ParseNumber(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return value;
  }

 private:
  template <auto kIsOfRun>
  std::string_view TakeRun() {
    std::size_t size = 0;
    while (size < rest_.size() && kIsOfRun(rest_[size])) ++size;
    const std::string_view run = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return run;
  }

  std::string_view rest_;
};

/// A time of day, and whether it named its zone: the seconds are those of UTC then.
struct Clock {
  double seconds = 0;
  bool has_zone = false;
};

struct Moment {
  double day = 0;
  bool has_zone = false;
};

Moment At(double date, const Clock& clock) {
  // One division, as in JoinDay.
  return {(date * kSecondsPerDay + clock.seconds) / kSecondsPerDay, clock.has_zone};
}

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

/// The year behind day and month. "5 Mar 06:00" holds none but a time.
std::optional<int> TakeYear(Scanner& scanner) {
  const Digits digits = scanner.TakeDigits();
  return digits.size == 2 && scanner.Next() == ':' ? std::nullopt : FullYear(digits);
}

/// The rest of "14-Mar-2024", "14 March, 2024", "14MAR2024" or "2024-Mar-14", from the name on.
std::optional<double> TakeNamedDate(Scanner& scanner, const Digits& first, char separator) {
  const Digits month = scanner.TakeName(kMonthNames);
  const bool joined = IsLetter(separator);
  if (separator == ' ' && !scanner.Take('.')) scanner.Take(',');
  if (month.size == 0 || (!joined && !scanner.TakeSeparator(separator))) return std::nullopt;
  if (first.size == 4) return DayOf(FullYear(first), month, scanner.TakeDigits());
  Scanner behind = scanner;
  // Without separators a short year would make dates of codes such as "3dec12".
  if (joined && behind.TakeDigits().size != 4) return std::nullopt;
  return DayOf(TakeYear(scanner), month, first);
}

/// A date whose first number is read already.
std::optional<double> TakeDate(Scanner& scanner, const Digits& first, SlashDate slash_date) {
  const char separator = scanner.Next();
  if (!IsLetter(separator)) scanner.TakeSeparator(separator);
  if (IsLetter(scanner.Next())) return TakeNamedDate(scanner, first, separator);
  const Digits second = scanner.TakeDigits();
  if (second.size == 0 || separator == ' ' || !scanner.Take(separator)) return std::nullopt;
  const Digits third = scanner.TakeDigits();
  if (first.size == 4) return DayOf(FullYear(first), second, third);
  if (separator == '-') return std::nullopt;
  const bool day_first = separator == '.' || slash_date == SlashDate::DayFirst;
  return day_first ? DayOf(FullYear(third), second, first) : DayOf(FullYear(third), first, second);
}

/// Blanks, among them those at which no line is broken, as some locales write them before "PM" and within "p. m.".
void SkipAnyBlanks(Scanner& scanner) {
  while (scanner.SkipBlanks() || scanner.TakeWord("\xC2\xA0") || scanner.TakeWord("\xE2\x80\xAF")) {
  }
}

/// Takes "am", "a.m." or "a. m.", `letter` being the "a".
bool TakeHalf(Scanner& scanner, std::string_view letter) {
  Scanner behind = scanner;
  if (!behind.TakeWord(letter)) return false;
  const bool point = behind.Take('.');
  if (point) SkipAnyBlanks(behind);
  if (!behind.TakeWord("m")) return false;
  if (point) behind.Take('.');
  scanner = behind;
  return true;
}

/// The hour on the 24-hour clock, am and pm taken.
std::optional<int> TakeHalfOfDay(Scanner& scanner, int hour) {
  Scanner behind = scanner;
  SkipAnyBlanks(behind);
  const bool morning = TakeHalf(behind, "a");
  const bool evening = !morning && TakeHalf(behind, "p");
  // "12:00 America/New_York"
  if ((!morning && !evening) || IsLetter(behind.Next())) return hour;
  scanner = behind;
  if (hour < 1 || hour > 12) return std::nullopt;
  return hour % 12 + (evening ? 12 : 0);
}

/// A zone known by its letters, and how far its clocks are ahead of UTC.
struct NamedZone {
  std::string_view name;
  int minutes;
};

/// Those that mean one offset wherever they are written; of "CST", "IST" and the like there are several.
constexpr NamedZone kNamedZones[] = {
    {"EST", -300}, {"EDT", -240}, {"CDT", -300}, {"MST", -420},  {"MDT", -360},  {"PST", -480},
    {"PDT", -420}, {"HST", -600}, {"WET", 0},    {"WEST", 60},   {"CET", 60},    {"CEST", 120},
    {"MEZ", 60},   {"MESZ", 120}, {"EET", 120},  {"EEST", 180},  {"MSK", 180},   {"JST", 540},
    {"KST", 540},  {"AEST", 600}, {"AEDT", 660}, {"AWST", 480},  {"ACST", 570},  {"ACDT", 630},
    {"NZST", 720}, {"NZDT", 780}, {"SAST", 120}, {"AKST", -540}, {"AKDT", -480}, {"NST", -210}};

/// Takes the name of such a zone, and turns the clock to UTC by it.
bool TakeNamedZone(Scanner& scanner, Clock& clock) {
  Scanner behind = scanner;
  const std::string_view name = behind.TakeLetters();
  const auto* const zone = std::ranges::find(kNamedZones, name, &NamedZone::name);
  if (zone == std::end(kNamedZones)) return false;
  scanner = behind;
  clock.seconds -= 60 * zone->minutes;
  clock.has_zone = true;
  return true;
}

/// Turns the clock to UTC by the zone that stands here, if any, a place behind it or alone being passed over; false when what
/// stands here is none that exists.
bool TakeZone(Scanner& scanner, Clock& clock) {
  if (scanner.AtEnd()) return true;
  Scanner behind = scanner;
  behind.SkipBlanks();
  if (TakeNamedZone(behind, clock)) {
    scanner = behind;
    return true;
  }
  clock.has_zone = behind.TakeWord("utc") || behind.TakeWord("gmt") || behind.TakeWord("z");
  const bool named = clock.has_zone;
  const bool west = behind.Next() == '-';
  if (west || behind.Next() == '+') {
    behind.Take(behind.Next());
    Digits hours = behind.TakeDigits();
    Digits minutes;
    if (hours.size == 4) {
      minutes = {hours.value % 100, 2};
      hours = {hours.value / 100, 2};
    } else if (behind.Take(':')) {
      minutes = behind.TakeDigits();
      if (minutes.size != 2) return false;
    }
    const bool whole = hours.size == 2 || (named && hours.size == 1);
    if (!whole || hours.value > kMostHoursAhead || minutes.value > 59) return false;
    clock.seconds -= (west ? -60 : 60) * (hours.value * 60 + minutes.value);
    clock.has_zone = true;
  }
  // "[Europe/Paris]" behind an offset, which says all.
  const bool placed = behind.SkipPlace();
  if (clock.has_zone || placed) scanner = behind;
  return true;
}

/// A time whose hour is read already, with its zone.
std::optional<Clock> TakeTime(Scanner& scanner, const Digits& hours, int most_hours) {
  if (hours.size == 0 || hours.value > most_hours || !scanner.Take(':')) return std::nullopt;
  const Digits minutes = scanner.TakeDigits();
  if (minutes.size != 2 || minutes.value > 59) return std::nullopt;
  Digits seconds;
  std::optional<double> fraction = 0;
  // "12:34.5" has minutes and seconds: of hours and minutes there are no tenths.
  if (scanner.Next() == '.') {
    fraction = scanner.TakeFraction();
    if (!fraction || !scanner.AtEnd()) return std::nullopt;
    return Clock{hours.value * 60 + minutes.value + *fraction};
  }
  if (scanner.Take(':')) {
    seconds = scanner.TakeDigits();
    if (seconds.size != 2 || seconds.value > 59) return std::nullopt;
    fraction = scanner.TakeFraction();
  }
  const std::optional<int> hour = TakeHalfOfDay(scanner, hours.value);
  if (!fraction || !hour) return std::nullopt;
  Clock clock{*hour * 3600 + minutes.value * 60 + seconds.value + *fraction};
  if (most_hours == kMostHoursOfDay && clock.seconds > kSecondsPerDay) return std::nullopt;
  return TakeZone(scanner, clock) ? std::optional(clock) : std::nullopt;
}

/// The time that the digits hh, hhmm or hhmmss[.f] mean, with its zone.
std::optional<Clock> TakeCompactTime(Scanner& scanner, std::string_view digits) {
  if (digits.size() != 2 && digits.size() != 4 && digits.size() != 6) return std::nullopt;
  const auto pair = [digits](std::size_t at) {
    return at < digits.size() ? DigitsOf(digits.substr(at, 2)).value : 0;
  };
  const std::optional<double> fraction = digits.size() == 6 ? scanner.TakeFraction() : 0;
  if (!fraction || pair(2) > 59 || pair(4) > 59) return std::nullopt;
  Clock clock{pair(0) * 3600 + pair(2) * 60 + pair(4) + *fraction};
  if (clock.seconds > kSecondsPerDay) return std::nullopt;
  return TakeZone(scanner, clock) ? std::optional(clock) : std::nullopt;
}

std::optional<double> CompactDate(std::string_view digits) {
  return DayOf(FullYear(DigitsOf(digits.substr(0, 4))), DigitsOf(digits.substr(4, 2)),
               DigitsOf(digits.substr(6, 2)));
}

/// True when a mark that may stand between date and time is taken.
bool TakeMarkOfTime(Scanner& scanner) {
  if (scanner.SkipBlanks()) return true;
  if (scanner.Take(',')) return scanner.SkipBlanks();
  return scanner.Take('T') || scanner.Take('t') || scanner.Take(':') || scanner.Take('_') ||
         scanner.Take('.');
}

/// `date` with the time behind it, if any; to the end of the text.
std::optional<Moment> WithTime(Scanner& scanner, std::optional<double> date) {
  if (!date || scanner.AtEnd()) return date ? std::optional(Moment{*date}) : std::nullopt;
  if (!TakeMarkOfTime(scanner)) return std::nullopt;
  const Digits hours = scanner.TakeDigits();
  const std::optional<Clock> clock = TakeTime(scanner, hours, kMostHoursOfDay);
  return clock && scanner.AtEnd() ? std::optional(At(*date, *clock)) : std::nullopt;
}

/// "20240314T120506", "20240314 12:05", "20180101:0000". Without a time eight digits are a number.
std::optional<Moment> ReadCompact(Scanner scanner) {
  const std::string_view digits = scanner.TakeDigitRun();
  if (digits.size() != kCompactDate || scanner.AtEnd()) return std::nullopt;
  const std::optional<double> date = CompactDate(digits);
  Scanner at_time = scanner;
  if (!date || !TakeMarkOfTime(at_time)) return std::nullopt;
  const std::string_view time = at_time.TakeDigitRun();
  if (at_time.Next() == ':') return WithTime(scanner, date);
  const std::optional<Clock> clock = TakeCompactTime(at_time, time);
  return clock && at_time.AtEnd() ? std::optional(At(*date, *clock)) : std::nullopt;
}

/// "12:05:06 2024" behind month and day: the order of C's own clock texts.
std::optional<Moment> ReadTimeAndYear(Scanner scanner, const Digits& month, const Digits& day) {
  const Digits hours = scanner.TakeDigits();
  std::optional<Clock> clock = TakeTime(scanner, hours, kMostHoursOfDay);
  if (!clock || !scanner.SkipBlanks()) return std::nullopt;
  const Digits year = scanner.TakeDigits();
  const std::optional<double> date = DayOf(FullYear(year), month, day);
  if (!date || year.size != 4) return std::nullopt;
  if (!clock->has_zone && !TakeZone(scanner, *clock)) return std::nullopt;
  return scanner.AtEnd() ? std::optional(At(*date, *clock)) : std::nullopt;
}

/// "Mar 14, 2024", "March 14 2024 12:05", "Mar 14 12:05:06 2024".
std::optional<Moment> ReadMonthFirst(Scanner scanner) {
  const Digits month = scanner.TakeName(kMonthNames);
  if (month.size == 0) return std::nullopt;
  scanner.Take('.');
  const char separator = scanner.Next();
  if (separator != ' ' && separator != '-' && separator != '/') return std::nullopt;
  scanner.TakeSeparator(separator);
  const Digits day = scanner.TakeDigits();
  const bool comma = scanner.Take(',');
  if (!scanner.TakeSeparator(separator) && !comma) return std::nullopt;
  if (const auto moment = ReadTimeAndYear(scanner, month, day)) return moment;
  const std::optional<int> year = TakeYear(scanner);
  return WithTime(scanner, DayOf(year, month, day));
}

bool IsDateSeparator(char c) {
  return c == '-' || c == '/' || c == '.' || c == ' ' || IsLetter(c);
}

/// A date whose first number is read already, with its time.
std::optional<Moment> ReadDate(Scanner& scanner, const Digits& first, SlashDate slash_date) {
  if (first.size == 0 || !IsDateSeparator(scanner.Next())) return std::nullopt;
  const std::optional<double> date = TakeDate(scanner, first, slash_date);
  return WithTime(scanner, date);
}

std::optional<Moment> ReadTimeAlone(Scanner& scanner, const Digits& hours) {
  const std::optional<Clock> clock = TakeTime(scanner, hours, kMostHoursPassed);
  return clock && scanner.AtEnd() ? std::optional(At(0, *clock)) : std::nullopt;
}

std::optional<Moment> ReadMoment(std::string_view text, SlashDate slash_date) {
  Scanner scanner(TrimBlanks(text));
  Digits first = scanner.TakeDigits();
  if (first.size > 0 && scanner.Next() == ':') return ReadTimeAlone(scanner, first);
  if (first.size > 0) return ReadDate(scanner, first, slash_date);
  if (IsDigit(scanner.Next())) return ReadCompact(scanner);
  if (scanner.TakeName(kWeekdayNames).size > 0) {
    scanner.Take(',');
    scanner.SkipBlanks();
  }
  if (IsLetter(scanner.Next())) return ReadMonthFirst(scanner);
  first = scanner.TakeDigits();
  return ReadDate(scanner, first, slash_date);
}

/// How many months each part of a year has that this letter counts: quarters and halves; 0 for other letters.
int MonthsOfPart(char letter) {
  const char lower = Lower(letter);
  return lower == 'q' ? 3 : lower == 'h' || lower == 's' ? 6 : 0;
}

/// The first month of "Q2", "H2" or "S2" (semester), no month when none stands here.
Digits TakePartOfYear(Scanner& scanner) {
  const int months = MonthsOfPart(scanner.Next());
  if (!scanner.TakeWord("q") && !scanner.TakeWord("h") && !scanner.TakeWord("s")) return {};
  const Digits part = scanner.TakeDigits();
  const bool there = part.size == 1 && part.value >= 1 && part.value * months <= 12;
  return {there ? (part.value - 1) * months + 1 : 0, 2};
}

/// The Monday of a week as ISO 8601 counts them: the first of a year is that of 4 January.
std::optional<double> MondayOf(int year, const Digits& week) {
  if (week.size != 2 || week.value < 1) return std::nullopt;
  const double fourth = JoinDay({.year = year, .month = 1, .day = 4});
  const double monday = fourth - (DayOfWeek(fourth) + 5) % 7 + 7 * (week.value - 1);
  return SplitDay(monday + 3).year == year ? std::optional(monday) : std::nullopt;
}

/// The first day of a half, quarter, month or week behind its year: "1990H1", "1990Q1", "1990-Q1", "1990M01", "1990-01", "1990
/// Jan", "1990-W01".
std::optional<double> ReadPeriodOfYear(Scanner scanner) {
  const Digits year = scanner.TakeDigits();
  if (year.size != 4) return std::nullopt;
  const char mark = scanner.Next();
  const bool parted = mark == '-' || mark == ' ' || mark == ':' || mark == '/' || mark == '_';
  if (parted) scanner.TakeSeparator(mark);
  Digits month = scanner.TakeName(kMonthNames);
  if (month.size == 0 && scanner.TakeWord("w")) {
    const Digits week = scanner.TakeDigits();
    return scanner.AtEnd() ? MondayOf(year.value, week) : std::nullopt;
  }
  if (month.size == 0 && MonthsOfPart(scanner.Next()) > 0) {
    month = TakePartOfYear(scanner);
  } else if (month.size == 0 && (scanner.TakeWord("m") || mark == '-' || mark == '/')) {
    month = scanner.TakeDigits();
  }
  return scanner.AtEnd() ? DayOf(FullYear(year), month, {1, 1}) : std::nullopt;
}

/// The same with the year behind: "Q1 1990", "01/1990", "Jan 1990", "Jan-90".
std::optional<double> ReadPeriodBeforeYear(Scanner scanner) {
  Digits month = scanner.TakeName(kMonthNames);
  const bool named = month.size > 0;
  if (!named && MonthsOfPart(scanner.Next()) > 0) {
    month = TakePartOfYear(scanner);
  } else if (!named) {
    month = scanner.TakeDigits();
    if (scanner.Next() != '/') return std::nullopt;
  }
  const char mark = scanner.Next();
  if (mark != '-' && mark != ' ' && mark != '/') return std::nullopt;
  scanner.TakeSeparator(mark);
  const Digits year = scanner.TakeDigits();
  if (!scanner.AtEnd() || (year.size != 4 && !(named && mark == '-'))) return std::nullopt;
  return DayOf(FullYear(year), month, {1, 1});
}

/// ReadMoment, or the first day of a period without zone.
std::optional<Moment> ReadMomentOrPeriod(std::string_view text, SlashDate slash_date) {
  if (const std::optional<Moment> moment = ReadMoment(text, slash_date)) return moment;
  const Scanner scanner(TrimBlanks(text));
  std::optional<double> period = ReadPeriodOfYear(scanner);
  if (!period) period = ReadPeriodBeforeYear(scanner);
  return period ? std::optional(Moment{*period}) : std::nullopt;
}

std::optional<Moment> ReadInAnyLanguage(std::string_view text, SlashDate slash_date) {
  if (const std::optional<Moment> moment = ReadMomentOrPeriod(text, slash_date)) return moment;
  const std::optional<std::string> english = WithEnglishMonth(TrimBlanks(text));
  return english ? ReadMomentOrPeriod(*english, slash_date) : std::nullopt;
}

}  // namespace

std::optional<double> ParseDay(std::string_view text, SlashDate slash_date) {
  const std::optional<Moment> moment = ReadInAnyLanguage(text, slash_date);
  return moment ? std::optional(moment->day) : std::nullopt;
}

std::optional<double> ParseCompactDay(std::string_view text) {
  Scanner scanner(TrimBlanks(text));
  const std::string_view digits = scanner.TakeDigitRun();
  if (digits.size() < kCompactDate) return std::nullopt;
  const std::optional<double> date = CompactDate(digits);
  if (!date || (digits.size() == kCompactDate && scanner.AtEnd())) return date;
  const std::optional<Clock> clock = TakeCompactTime(scanner, digits.substr(kCompactDate));
  return clock && scanner.AtEnd() ? std::optional(At(*date, *clock).day) : std::nullopt;
}

bool HasZone(std::string_view text) {
  std::optional<Moment> moment = ReadInAnyLanguage(text, SlashDate::MonthFirst);
  if (!moment) moment = ReadInAnyLanguage(text, SlashDate::DayFirst);
  return moment && moment->has_zone;
}

std::string_view BeginningOfInterval(std::string_view text) {
  constexpr std::size_t kShortest = 10;  // of a moment
  const auto begins_moment = [](std::string_view moment) {
    return moment.size() >= kShortest && DigitsOf(moment).size == 4 && moment[4] == '-';
  };
  if (text.size() <= 2 * kShortest || !begins_moment(text)) return {};
  for (const std::string_view mark : {"/", "--"}) {
    const std::size_t at = text.find(mark);
    if (at != text.npos && begins_moment(text.substr(at + mark.size()))) return text.substr(0, at);
  }
  return {};
}

}  // namespace tarnwick
