#include "data/fields/field_kind.h"

#include <algorithm>
#include <iterator>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/fields/factor_text.h"
#include "data/fields/field_value.h"
#include "data/fields/known_units.h"
#include "data/fields/text_fields.h"
#include "data/fields/unit_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestValue = 64;
constexpr std::size_t kLongestPlaceholder = 9;
constexpr std::size_t kShortestNamedDate = 6;  // "1 May 24"

bool IsPlaceholder(std::string_view text) {
  constexpr std::string_view kPlaceholders[] = {
      "na",           "n/a",          "nan",     "#n/a",  "-",      "--",      "---",      "null",
      "none",         "inf",          "-inf",    "+inf",  "?",      "*",       "missing",  "nd",
      "n.d.",         "nil",          "indef",   "--.-",  "nodata", "no data", "-nan",     "...",
      "\xE2\x80\x93", "\xE2\x80\x94", "n.a.",    "ol",    "ovld",   "ovf",     "overflow", "error",
      "bad",          "#div/0!",      "#value!", "#num!", "#ref!",  ".",       "xxx"};
  if (text.size() > kLongestPlaceholder) return false;
  const std::string lower = LowerAscii(text);
  return std::find(std::begin(kPlaceholders), std::end(kPlaceholders), lower) !=
         std::end(kPlaceholders);
}

/// "<0.1": below what could be measured.
bool IsLimit(std::string_view text) {
  return text.size() > 1 && (text.front() == '<' || text.front() == '>') &&
         ValueOfField(text.substr(1), ColumnFormat::Number).has_value();
}

bool IsDate(std::string_view text) {
  return ValueOfField(text, ColumnFormat::DateMonthFirst) ||
         ValueOfField(text, ColumnFormat::DateDayFirst);
}

/// Months, days of the week, quarters and halves begin with these.
bool MayNameDate(std::string_view text) {
  constexpr std::string_view kInitials = "JFMASONDTWQHEGLKPCjfmasondtwqheglkpc";
  return text.size() >= kShortestNamedDate && kInitials.find(text.front()) != kInitials.npos &&
         std::any_of(text.begin(), text.end(), IsDigit);
}

/// The marks within dates and times; a sign behind an exponent is none.
bool HasDateMark(std::string_view text) {
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] == ':' || text[i] == '/') return true;
    if (text[i] == '-' && IsDigit(text[i - 1])) return true;
  }
  return false;
}

bool MayBeginNumber(char c) {
  return IsDigit(c) || c == '+' || c == '-' || c == '.' || c == ',' || c == '$' || c == '\xE2' ||
         c == '\xC2';
}

/// "12.5 mV", "12mV", "5 apples"; "2 theta" is an angle's name, "13CS" is a label: letters joined to digits are a unit only where
/// they are known as one.
bool IsQuantity(std::string_view text) {
  const std::optional<NumberAndUnit> split = SplitUnit(text);
  if (!split || LowerAscii(split->unit).starts_with("theta")) return false;
  return !split->joined || !IsLetter(split->unit.front()) || IsKnownUnit(split->unit);
}

/// "01/87", a month and a year, or "00/12/16", a year, a month and a day, of two digits each.
bool IsShortDate(std::string_view text) {
  if (text.size() != 5 && text.size() != 8) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i % 3 == 2 ? text[i] != '/' : !IsDigit(text[i])) return false;
  }
  const std::string_view month = text.substr(text.size() == 5 ? 0 : 3, 2);
  return month >= "01" && month <= "12" &&
         text.substr(text.size() - 2) <= (text.size() == 5 ? "99" : "31");
}

constexpr std::size_t kAnyDigits = 6;  // of an exponent, as many as anybody writes

/// "-1.5e-3" and the like: what nearly all fields of tables are. Longer exponents may be beyond all numbers.
bool IsPlainNumber(std::string_view text, std::size_t most_exponent_digits = 2) {
  std::size_t at = text.front() == '-' || text.front() == '+' ? 1 : 0;
  std::size_t digits = 0;
  const auto skip_digits = [&] {
    for (; at < text.size() && IsDigit(text[at]); ++at) ++digits;
  };
  skip_digits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    skip_digits();
  }
  if (digits == 0) return false;
  if (at == text.size()) return true;
  if (text[at] != 'e' && text[at] != 'E') return false;
  ++at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  digits = 0;
  skip_digits();
  return at == text.size() && digits > 0 && digits <= most_exponent_digits;
}

}  // namespace

bool IsColumnWidth(std::string_view text) {
  constexpr std::string_view kKinds = "sdnSDNM";
  return !text.empty() && kKinds.find(text.back()) != kKinds.npos &&
         std::all_of(text.begin(), text.end() - 1, IsDigit);
}

FieldKind KindOfField(std::string_view text) {
  text = TrimBlankBytes(text);
  if (text.empty()) return FieldKind::Empty;
  if (text.size() > kLongestValue) return FieldKind::Text;
  if (!MayBeginNumber(text.front())) {
    if (IsPlaceholder(text) || IsLimit(text)) return FieldKind::Placeholder;
    return MayNameDate(text) && IsDate(text) ? FieldKind::Date : FieldKind::Text;
  }
  if (IsPlainNumber(text)) return FieldKind::Number;
  if (HasDateMark(text) && IsDate(text)) return FieldKind::Date;
  if (ValueOfField(text, ColumnFormat::Number)) return FieldKind::Number;
  if (IsPlaceholder(text) || IsPlainNumber(text, kAnyDigits)) return FieldKind::Placeholder;
  if (ValueOfField(text, ColumnFormat::DecimalComma) ||
      ValueOfField(text, ColumnFormat::GroupedThousands)) {
    return text.find(' ') == text.npos ? FieldKind::Number : FieldKind::Quantity;
  }
  if (IsDate(text)) return FieldKind::Date;
  // "01/87", "00/12/16": columns of them are dates where the rows run so.
  if (IsShortDate(text)) return FieldKind::Date;
  return IsQuantity(text) || SplitFactor(text) ? FieldKind::Quantity : FieldKind::Text;
}

std::size_t LengthFromPoint(std::string_view text) {
  return text.size() - std::min(text.find('.'), text.size());
}

}  // namespace tarnwick
