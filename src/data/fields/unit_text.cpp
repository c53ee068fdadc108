#include "data/fields/unit_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestNumber = 60;
constexpr std::size_t kLongestUnit = 24;
constexpr std::size_t kLongestWordOfMany = 3;
constexpr std::string_view kMinus = "\xE2\x88\x92";
constexpr std::string_view kCurrencies[] = {"$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5"};
constexpr std::string_view kPlusMinus[] = {"\xC2\xB1", "\xB1", "+/-", "+-"};
constexpr std::string_view kBlanks[] = {" ",    "\t",           "\xC2\xA0",
                                        "\xA0", "\xE2\x80\xAF", "\xE2\x80\x89"};

bool IsBeyondAscii(char c) {
  return static_cast<unsigned char>(c) >= 0x80;
}

template <std::size_t Count>
bool TakeOneOf(const std::string_view (&words)[Count], std::string_view& text) {
  for (const std::string_view word : words) {
    if (!text.starts_with(word)) continue;
    text.remove_prefix(word.size());
    return true;
  }
  return false;
}

std::size_t DigitsFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

/// How much of `text` is digits with at most one mark of the decimals, and an exponent that has digits.
std::size_t NumberSize(std::string_view text) {
  std::size_t size = DigitsFrom(text, 0);
  if (size < text.size() && (text[size] == '.' || text[size] == ',')) {
    size = DigitsFrom(text, size + 1);
  }
  std::size_t exponent = size;
  if (exponent < text.size() && (text[exponent] == 'e' || text[exponent] == 'E')) {
    ++exponent;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    if (DigitsFrom(text, exponent) > exponent) size = DigitsFrom(text, exponent);
  }
  return size;
}

/// True where a comma stands as in "1,234": it may group thousands as well.
bool HasDoubtfulComma(std::string_view number) {
  const std::size_t comma = number.find(',');
  return comma != number.npos && comma > 0 && comma <= 3 && number.front() != '0' &&
         DigitsFrom(number, comma + 1) == comma + 4;
}

/// "a" behind "9", "f2" behind "1": digits to the base of sixteen, all small or all capital. A lone letter that is a usual
/// unit is one.
bool LooksHexadecimal(std::string_view unit) {
  if (unit == "A" || unit == "C" || unit == "F" || unit == "d") return false;
  const auto all = [unit](char first, char last) {
    return std::all_of(unit.begin(), unit.end(),
                       [=](char c) { return IsDigit(c) || (c >= first && c <= last); });
  };
  return all('a', 'f') || all('A', 'F');
}

bool LooksOrdinal(std::string_view unit) {
  const std::string lower = LowerAscii(unit);
  return lower == "st" || lower == "nd" || lower == "rd" || lower == "th";
}

/// Letters and signs, at most one digit at a time and no letter behind it.
bool IsOfUnitCharacters(std::string_view unit) {
  constexpr std::string_view kJoins = " ./*^-()[]";
  for (std::size_t i = 0; i < unit.size(); ++i) {
    const char c = unit[i];
    const char next = i + 1 < unit.size() ? unit[i + 1] : '\0';
    if (IsDigit(c) && (IsDigit(next) || IsLetter(next))) return false;
    const bool known =
        IsDigit(c) || IsLetter(c) || IsBeyondAscii(c) || c == '%' || kJoins.find(c) != kJoins.npos;
    if (!known) return false;
  }
  return true;
}

/// True when no word, but the one word of a unit of one, is longer than words of units are.
bool HasShortWords(std::string_view unit) {
  if (unit.find(' ') == unit.npos) return true;
  std::size_t letters = 0;
  for (const char c : unit) {
    letters = IsLetter(c) ? letters + 1 : 0;
    if (letters > kLongestWordOfMany) return false;
  }
  return true;
}

bool IsUnit(std::string_view unit) {
  if (unit.empty() || unit.size() > kLongestUnit) return false;
  if (unit == "*" || unit == "#") return true;  // flags of an estimate and the like
  const char first = unit.front();
  if (!IsLetter(first) && !IsBeyondAscii(first) && first != '%') return false;
  return IsOfUnitCharacters(unit) && HasShortWords(unit);
}

/// What one of the last digit of a number as it is written counts.
double LastDigit(std::string_view written) {
  const std::size_t exponent = std::min(written.find_first_of("eE"), written.size());
  const std::size_t mark = std::min(written.find_first_of(".,"), exponent);
  const std::size_t decimals = mark == exponent ? 0 : exponent - mark - 1;
  const std::string_view power = written.substr(std::min(exponent + 1, written.size()));
  const double tens = power.empty() ? 0 : ParseNumber(power).value_or(0);
  return std::pow(10, tens - static_cast<double>(decimals));
}

/// How uncertain a number is, written behind it.
struct Uncertainty {
  std::optional<double> size;  ///< where it is plain
};

/// Of `text` behind `number`: "± 0.2", "+/- 0.2 mV", "(5)", with the unit of both.
std::optional<Uncertainty> UncertaintyIn(std::string_view text, const NumberAndUnit& number,
                                         std::string_view written) {
  const auto pass_blanks = [&text] {
    const std::size_t before = text.size();
    while (TakeOneOf(kBlanks, text)) {
    }
    return text.size() != before;
  };
  const bool apart = pass_blanks();
  const bool bracket = text.starts_with('(');
  if (bracket) {
    text.remove_prefix(1);
  } else if (!TakeOneOf(kPlusMinus, text)) {
    return std::nullopt;
  }
  pass_blanks();
  const std::size_t size = NumberSize(text);
  if (size == 0 || !IsDigit(text.front())) return std::nullopt;
  const std::string_view digits = text.substr(0, size);
  std::optional<double> error = ParseNumber(digits);
  if (bracket && apart) error.reset();
  if (bracket && error && ParseInteger(digits)) *error *= LastDigit(written);
  text.remove_prefix(size);
  if (bracket && !text.starts_with(')')) return std::nullopt;
  text.remove_prefix(bracket ? 1 : 0);
  pass_blanks();
  if (!text.empty() && !IsUnit(text)) return std::nullopt;
  if (error && text == "%") *error *= std::abs(number.number) / 100;
  return Uncertainty{error && std::isfinite(*error) ? error : std::nullopt};
}

}  // namespace

std::optional<NumberAndUnit> SplitUnit(std::string_view text) {
  text = TrimBlanks(text);
  const bool true_minus = text.starts_with(kMinus);
  const bool negative = true_minus || text.starts_with('-');
  if (true_minus) {
    text.remove_prefix(kMinus.size());
  } else if (negative || text.starts_with('+')) {
    text.remove_prefix(1);
  }
  std::string_view rest = text;
  const bool priced = TakeOneOf(kCurrencies, rest);
  const std::string_view currency = text.substr(0, text.size() - rest.size());
  const std::size_t size = NumberSize(rest);
  if (size == 0 || size > kLongestNumber) return std::nullopt;
  const std::string_view written = rest.substr(0, size);
  const std::optional<double> number = ParseNumber(written);
  if (!number || !std::isfinite(*number)) return std::nullopt;
  const double value = negative ? -*number : *number;
  rest.remove_prefix(size);
  if (rest.empty() && !priced) return NumberAndUnit{value, {}};
  if (HasDoubtfulComma(written)) return std::nullopt;
  if (priced) return rest.empty() ? std::optional(NumberAndUnit{value, currency}) : std::nullopt;
  if (const auto found = UncertaintyIn(rest, {value, {}}, written)) {
    return NumberAndUnit{value, {}, found->size};
  }
  const std::size_t before = rest.size();
  while (TakeOneOf(kBlanks, rest)) {
  }
  const bool joined = rest.size() == before;
  if (!IsUnit(rest) || (joined && (LooksHexadecimal(rest) || LooksOrdinal(rest)))) {
    return std::nullopt;
  }
  const bool prefix_of_base =
      joined && written == "0" && (rest.front() == 'x' || rest.front() == 'X');
  if (prefix_of_base) return std::nullopt;
  return NumberAndUnit{value, rest, std::nullopt, joined};
}

}  // namespace tarnwick
