// The text of a day number by a format.
#include <array>
#include <cstddef>
#include <vector>

#include "base/day_number.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr std::size_t kShortName = 3;

enum class Part { Literal, Day, Month, Year, Hour, Minute, Second, Millisecond, Both, HalfOfDay };

struct Token {
  Part part = Part::Literal;
  std::string_view text;
};

Part PartOf(char letter) {
  switch (letter) {
    case 'd':
      return Part::Day;
    case 'm':
      return Part::Month;
    case 'y':
      return Part::Year;
    case 'h':
      return Part::Hour;
    case 'n':
      return Part::Minute;
    case 's':
      return Part::Second;
    case 'z':
      return Part::Millisecond;
    case 'c':
      return Part::Both;
    default:
      return Part::Literal;
  }
}

// The token at the front of non-empty text; its text in the format's own letters, without quotes.
Token FirstToken(std::string_view format, std::size_t& length) {
  const char first = format.front();
  if (first == '\'' || first == '"') {
    const std::size_t close = format.find(first, 1);
    length = close == std::string_view::npos ? format.size() : close + 1;
    const std::size_t end = close == std::string_view::npos ? length : close;
    return {Part::Literal, format.substr(1, end - 1)};
  }
  const std::string lower = LowerAscii(format.substr(0, 5));
  for (const std::string_view half : {"am/pm", "ampm", "a/p"}) {
    if (lower.starts_with(half)) {
      length = half.size();
      return {Part::HalfOfDay, format.substr(0, length)};
    }
  }
  const char letter = lower.front();
  const Part part = PartOf(letter);
  const char upper = part == Part::Literal ? first : static_cast<char>(letter - 'a' + 'A');
  length = 1;
  if (part != Part::Literal && part != Part::Both) {
    while (length < format.size() && (format[length] == letter || format[length] == upper)) {
      ++length;
    }
  }
  return {part, format.substr(0, length)};
}

// Months beside hours or seconds are minutes.
void TellMinutesFromMonths(std::vector<Token>& tokens) {
  Token* last = nullptr;
  for (Token& token : tokens) {
    if (token.part == Part::Literal) continue;
    const bool short_month = token.part == Part::Month && token.text.size() <= 2;
    if (last != nullptr && last->part == Part::Hour && short_month) {
      token.part = Part::Minute;
    } else if (last != nullptr && last->part == Part::Month && last->text.size() <= 2 &&
               token.part == Part::Second) {
      last->part = Part::Minute;
    }
    last = &token;
  }
}

std::vector<Token> Tokens(std::string_view format) {
  std::vector<Token> tokens;
  while (!format.empty()) {
    std::size_t length = 0;
    tokens.push_back(FirstToken(format, length));
    format.remove_prefix(length);
  }
  TellMinutesFromMonths(tokens);
  return tokens;
}

std::string Padded(int value, std::size_t width) {
  const std::string digits = std::to_string(value);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string NumberOrName(int value, std::string_view name, std::size_t letters) {
  if (letters <= 2) return Padded(value, letters);
  return std::string(letters == 3 ? name.substr(0, kShortName) : name);
}

std::string General(const DateTime& parts) {
  std::string text =
      Padded(parts.year, 4) + '-' + Padded(parts.month, 2) + '-' + Padded(parts.day, 2);
  if (parts.hour != 0 || parts.minute != 0 || parts.second != 0) {
    text +=
        ' ' + Padded(parts.hour, 2) + ':' + Padded(parts.minute, 2) + ':' + Padded(parts.second, 2);
  }
  return text;
}

// The morning's or the evening's half of "am/pm", "ampm", "a/p", in the format's own letters.
std::string_view HalfOfDayText(std::string_view both, bool evening) {
  const std::size_t size = both.size() == 3 ? 1 : 2;
  return evening ? both.substr(both.size() - size) : both.substr(0, size);
}

class Formatter {
 public:
  Formatter(double day, bool twelve_hours)
      : parts_(SplitDay(day)), weekday_(DayOfWeek(day)), twelve_hours_(twelve_hours) {}

  std::string Text(const Token& token) const {
    const std::size_t letters = token.text.size();
    switch (token.part) {
      case Part::Literal:
        return std::string(token.text);
      case Part::Day:
        return NumberOrName(parts_.day, kWeekdayNames[static_cast<std::size_t>(weekday_ - 1)],
                            letters);
      case Part::Month:
        return NumberOrName(parts_.month, kMonthNames[static_cast<std::size_t>(parts_.month - 1)],
                            letters);
      case Part::Year:
        return letters <= 2 ? Padded(parts_.year % 100, 2) : Padded(parts_.year, 4);
      case Part::Hour:
        return Padded(Hour(), letters);
      case Part::Minute:
        return Padded(parts_.minute, letters);
      case Part::Second:
        return Padded(parts_.second, letters);
      case Part::Millisecond:
        return Padded(parts_.millisecond, letters);
      case Part::Both:
        return General(parts_);
      case Part::HalfOfDay:
        return std::string(HalfOfDayText(token.text, parts_.hour >= 12));
    }
    return {};
  }

 private:
  int Hour() const { return twelve_hours_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour; }

  DateTime parts_;
  int weekday_;
  bool twelve_hours_;
};

}  // namespace

std::string FormatDay(double day, std::string_view format) {
  if (!IsCalendarDay(day)) return {};
  const std::vector<Token> tokens = Tokens(format);
  bool twelve_hours = false;
  for (const Token& token : tokens) twelve_hours |= token.part == Part::HalfOfDay;
  const Formatter formatter(day, twelve_hours);
  std::string text;
  for (const Token& token : tokens) text += formatter.Text(token);
  return text;
}

std::string MomentText(double day) {
  if (!IsCalendarDay(day)) return ShortestText(day);
  const DateTime parts = SplitDay(day);
  if (parts.millisecond != 0) return FormatDay(day, "yyyy-mm-dd hh:nn:ss.zzz");
  const bool midnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
  return FormatDay(day, midnight ? "yyyy-mm-dd" : "yyyy-mm-dd hh:nn:ss");
}

}  // namespace tarnwick
