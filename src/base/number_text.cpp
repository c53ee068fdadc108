#include "base/number_text.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr double kFixedFrom = 1e-5;
constexpr double kShortestFixedBelow = 1e15;
constexpr int kSmallestFixedExponent = -5;

// Longest fixed text: sign, 309 digits, point, 100 decimals.
using Buffer = std::array<char, 512>;

std::optional<std::string> SpecialText(double value) {
  if (IsUndefined(value)) return "NaN";
  if (std::isinf(value)) return value > 0 ? "INF" : "-INF";
  return std::nullopt;
}

// "1.50e+08" as its parts.
struct Scientific {
  std::string_view sign;
  std::string digits;  // without the point
  int exponent = 0;
};

Scientific Split(std::string_view text) {
  Scientific parts;
  if (text.starts_with('-')) {
    parts.sign = "-";
    text.remove_prefix(1);
  }
  const std::size_t e = text.find('e');
  for (const char c : text.substr(0, e)) {
    if (c != '.') parts.digits += c;
  }
  std::string_view exponent = text.substr(e + 1);
  if (exponent.starts_with('+')) exponent.remove_prefix(1);
  std::from_chars(exponent.data(), exponent.data() + exponent.size(), parts.exponent);
  return parts;
}

std::string ExponentForm(const Scientific& parts) {
  std::string text(parts.sign);
  text += parts.digits.front();
  if (parts.digits.size() > 1) text.append(".").append(parts.digits, 1);
  return text + 'E' + std::to_string(parts.exponent);
}

std::string FixedForm(const Scientific& parts) {
  std::string text(parts.sign);
  if (parts.exponent < 0) {
    return text + "0." + std::string(static_cast<std::size_t>(-parts.exponent - 1), '0') +
           parts.digits;
  }
  const auto whole = static_cast<std::size_t>(parts.exponent) + 1;
  if (parts.digits.size() <= whole) {
    return text + parts.digits + std::string(whole - parts.digits.size(), '0');
  }
  return text.append(parts.digits, 0, whole).append(".").append(parts.digits, whole);
}

std::optional<double> ParseWord(std::string_view word) {
  const std::string lower = LowerAscii(word);
  if (lower == "nan") return kUndefined;
  if (lower == "inf" || lower == "infinity") return std::numeric_limits<double>::infinity();
  return std::nullopt;
}

}  // namespace

std::string ShortestText(double value) {
  if (auto special = SpecialText(value)) return *special;
  Buffer buffer;
  const double size = std::abs(value);
  const bool fixed = size == 0 || (size >= kFixedFrom && size < kShortestFixedBelow);
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 fixed ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  return fixed ? std::string(text) : ExponentForm(Split(text));
}

std::string GeneralText(double value, int digits) {
  if (auto special = SpecialText(value)) return *special;
  if (value == 0) return "0";
  digits = std::clamp(digits, 1, 17);
  Buffer buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, digits - 1)
                       .ptr;
  Scientific parts = Split({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
  parts.digits.erase(parts.digits.find_last_not_of('0') + 1);
  const bool fixed = parts.exponent >= kSmallestFixedExponent && parts.exponent < digits;
  return fixed ? FixedForm(parts) : ExponentForm(parts);
}

std::string FixedText(double value, int decimals) {
  if (auto special = SpecialText(value)) return *special;
  Buffer buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::fixed, std::clamp(decimals, 0, 100))
                       .ptr;
  std::string text(buffer.data(), end);
  if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-') text.erase(0, 1);
  return text;
}

std::optional<double> ParseNumber(std::string_view text) {
  text = TrimBlanks(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty()) return std::nullopt;
  std::optional<double> value;
  const char first = text.front();
  if (IsDigit(first) || first == '.' || first == ',') {
    // The whole text must be read, so that a second separator of either kind makes it no number.
    const char separator = text.find(',') == std::string_view::npos ? '.' : ',';
    const fast_float::parse_options options(fast_float::chars_format::general, separator);
    double read = 0;
    const auto result =
        fast_float::from_chars_advanced(text.data(), text.data() + text.size(), read, options);
    // Out of range leaves the infinity or zero that the number rounds to.
    const bool is_number = result.ec == std::errc() || result.ec == std::errc::result_out_of_range;
    if (is_number && result.ptr == text.data() + text.size()) value = read;
  } else {
    value = ParseWord(text);
  }
  if (value && negative && !IsUndefined(*value)) value = -*value;
  return value;
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
  text = TrimBlanks(text);
  if (text.size() > 1 && text.front() == '+' && IsDigit(text[1])) text.remove_prefix(1);
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::string Counted(std::int64_t count, std::string_view thing) {
  return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

std::string_view TrimBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace tarnwick
