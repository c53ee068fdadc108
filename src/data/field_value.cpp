#include "data/field_value.h"

#include <cmath>
#include <cstddef>
#include <string>

#include "base/day_number.h"
#include "base/number_text.h"
#include "data/text_fields.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestGroupedNumber = 400;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::optional<double> Finite(std::optional<double> value) {
  return value && std::isfinite(*value) ? value : std::nullopt;
}

/// "3-4-2024 10:00" as "3/4/2024 10:00": day and month before the year are written with dashes too.
std::optional<double> ParseDayInOrder(std::string_view text, SlashDate order) {
  if (const std::optional<double> day = ParseDay(text, order)) return day;
  const std::size_t first = text.find('-');
  if (first == text.npos || first == 0 || first > 2 || text.size() > 64) return std::nullopt;
  const std::size_t second = text.find('-', first + 1);
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

}  // namespace

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

std::optional<double> FieldValue(std::string_view text, ColumnFormat format) {
  text = TrimBlankBytes(text);
  switch (format) {
    case ColumnFormat::Number:
      return Finite(ParseNumber(text));
    case ColumnFormat::DecimalComma:
      return Finite(ParseDecimalComma(text));
    case ColumnFormat::DateTime:
    case ColumnFormat::DateMonthFirst:
      return ParseDayInOrder(text, SlashDate::MonthFirst);
    case ColumnFormat::DateDayFirst:
      return ParseDayInOrder(text, SlashDate::DayFirst);
    case ColumnFormat::Automatic:
      break;
  }
  // A value outside the list comes from a damaged file; it reads like the automatic format.
  if (const std::optional<double> number = ParseNumber(text)) return Finite(number);
  return ParseDay(text);
}

}  // namespace tarnwick
