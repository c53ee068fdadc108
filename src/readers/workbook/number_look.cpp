#include "readers/workbook/number_look.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "base/day_number.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kDaysFrom1900To1904 = 1462;
constexpr double kFirstOfMarch1900 = 61;
constexpr double kLongestTime = 400;  // days; a time of day alone is less than one

struct Letters {
  bool of_date = false;
  bool of_time = false;
  bool passed = false;
  bool of_percent = false;
};

char Small(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

/// What stands in brackets: hours, minutes or seconds that run on; else a colour, a condition, a language.
bool RunsOn(std::string_view bracket) {
  if (bracket.empty()) return false;
  const char first = Small(bracket.front());
  if (first != 'h' && first != 'm' && first != 's') return false;
  for (const char c : bracket) {
    if (Small(c) != first) return false;
  }
  return true;
}

Letters LettersOf(std::string_view code) {
  Letters letters;
  for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
    const char c = Small(code[i]);
    if (c == '"') {
      i = std::min(code.find('"', i + 1), code.size());
    } else if (c == '\\' || c == '_' || c == '*') {
      ++i;
    } else if (c == '[') {
      const std::size_t end = std::min(code.find(']', i), code.size());
      letters.passed |= RunsOn(code.substr(i + 1, end - i - 1));
      i = end;
    } else if (c == 'y' || c == 'd') {
      letters.of_date = true;
    } else if (c == 'h' || c == 's') {
      letters.of_time = true;
    } else if (c == 'm' && !letters.of_time) {
      // Minutes stand behind hours or before seconds; a lone "mm:ss" is found by its seconds.
      letters.of_date |= code.substr(i).find(':') == code.npos;
    } else if (c == '%') {
      letters.of_percent = true;
    } else if (code.substr(i, 7) == "General") {
      return letters;
    }
  }
  return letters;
}

}  // namespace

NumberLook LookOfCode(std::string_view code) {
  const Letters letters = LettersOf(code);
  if (letters.passed) return NumberLook::Duration;
  if (letters.of_date) return NumberLook::Date;
  if (letters.of_time) return NumberLook::Time;
  return letters.of_percent ? NumberLook::Percent : NumberLook::Number;
}

NumberLook LookOfBuiltIn(int number) {
  if (number == 9 || number == 10) return NumberLook::Percent;
  if (number == 46) return NumberLook::Duration;
  if ((number >= 18 && number <= 21) || number == 45 || number == 47) return NumberLook::Time;
  const bool date = (number >= 14 && number <= 22) || (number >= 27 && number <= 36) ||
                    (number >= 50 && number <= 58);
  return date ? NumberLook::Date : NumberLook::Number;
}

std::string PercentText(double share) {
  constexpr int kDigits = 15;  // one more would show the error of the product
  return GeneralText(100 * share, kDigits) + '%';
}

std::string TimeText(double seconds) {
  const auto milliseconds = static_cast<std::int64_t>(std::llround(seconds * 1000));
  const auto two = [](std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
  };
  const std::int64_t whole = milliseconds / 1000;
  std::string text = two(whole / 3600) + ':' + two(whole / 60 % 60) + ':' + two(whole % 60);
  if (const std::int64_t rest = milliseconds % 1000; rest > 0) {
    text += '.' + std::to_string(1000 + rest).substr(1);
  }
  return text;
}

std::string DayText(double days, NumberLook look, DayZero zero) {
  const bool time =
      look == NumberLook::Duration || (look == NumberLook::Time && days < kLongestTime);
  if (look == NumberLook::Number || !std::isfinite(days) || days < 0) return ShortestText(days);
  if (time) return days < kLongestTime ? TimeText(days * kSecondsPerDay) : ShortestText(days);
  if (zero == DayZero::In1904) {
    days += kDaysFrom1900To1904;
  } else if (days >= 1 && days < kFirstOfMarch1900 - 1) {
    days += 1;
  }
  return MomentText(days);
}

}  // namespace tarnwick
