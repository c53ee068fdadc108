#include "graph/axes/tick_label.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "base/day_number.h"
#include "base/number_text.h"
#include "graph/axes/nice_step.h"

namespace tarnwick {
namespace {

constexpr double kLogToDecimal = 0.4342944818;
constexpr int kGeneralDigits = 12;
/// From here on the decimal text of a double shows digits that nobody wrote.
constexpr int kMostDigits = 16;
/// A step of more digits is no decimal number someone meant.
constexpr int kMeantDigits = 4;
/// Beyond these a fixed text would be a row of zeros.
constexpr double kLargestFixed = 1e15;
constexpr int kMostDecimals = 15;

std::string ScientificText(double value, int decimals) {
  std::array<char, 64> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, std::clamp(decimals, 0, 17));
  std::string text(buffer.data(), end.ptr);
  const std::size_t mark = text.find('e');
  if (mark == std::string::npos) return ShortestText(value);
  int exponent = 0;
  const std::size_t digits = mark + (text[mark + 1] == '+' ? 2 : 1);
  std::from_chars(text.data() + digits, text.data() + text.size(), exponent);
  return text.substr(0, mark) + "E" + std::to_string(exponent);
}

/// How exactly a label is written.
struct Precision {
  int decimals = 0;
  int digits = kGeneralDigits;  ///< significant ones, where the general format is used
};

std::string DigitsText(double value, int digits) {
  return digits < kMostDigits ? GeneralText(value, digits) : ShortestText(value);
}

std::string PlainText(double value, const Precision& precision) {
  if (!(std::abs(value) < kLargestFixed) || precision.decimals > kMostDecimals) {
    return DigitsText(value, precision.digits);
  }
  return FixedText(value, std::max(precision.decimals, 0));
}

std::string ThousandsText(double value, const Precision& precision) {
  std::string text = PlainText(value, precision);
  if (text.find('E') != std::string::npos) return text;
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  std::size_t end = std::min(text.find('.'), text.size());
  while (end > first + 3) {
    end -= 3;
    text.insert(end, " ");
  }
  return text;
}

std::string EngineeringText(double value) {
  constexpr int kSmallestPrefix = -15;
  constexpr std::array<const char*, 11> kPrefixes{"f", "p", "n", "\u00b5", "m", "",
                                                  "k", "M", "G", "T",      "P"};
  constexpr int kDigits = 6;
  if (value == 0 || !std::isfinite(value)) return GeneralText(value, kDigits);
  const int exponent = SplitDecimal(std::abs(value)).exponent;
  const int thousands = (exponent >= 0 ? exponent : exponent - 2) / 3;
  const double mantissa = static_cast<double>(
      static_cast<long double>(value) / std::pow(10.0L, static_cast<long double>(3 * thousands)));
  const std::string text = GeneralText(mantissa, kDigits);
  const int place = thousands - kSmallestPrefix / 3;
  if (place >= 0 && std::cmp_less(place, kPrefixes.size())) {
    return text + kPrefixes[static_cast<std::size_t>(place)];
  }
  return text + "E" + std::to_string(3 * thousands);
}

std::string PercentText(double value, const Precision& precision) {
  return PlainText(value * 100, {precision.decimals - 2, precision.digits}) + "%";
}

std::string HexadecimalText(double value) {
  constexpr double kLargestWhole = 9.2e18;
  if (!(std::abs(value) < kLargestWhole)) return GeneralText(value, kGeneralDigits);
  std::array<char, 24> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::llround(value), 16);
  std::string text(buffer.data(), end.ptr);
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

std::string NumberLabel(LabelFormat format, double value, const Precision& precision) {
  switch (format) {
    case LabelFormat::General:
      return DigitsText(value, precision.digits);
    case LabelFormat::Scientific:
      return ScientificText(value, precision.decimals);
    case LabelFormat::Thousands:
      return ThousandsText(value, precision);
    case LabelFormat::Engineering:
      return EngineeringText(value);
    case LabelFormat::Percent:
      return PercentText(value, precision);
    case LabelFormat::Hexadecimal:
      return HexadecimalText(value);
    case LabelFormat::Fixed:
      break;
  }
  return PlainText(value, precision);
}

int LogDecimals(const AxisState& axis, double value) {
  constexpr int kFineDivisions = 5;
  const int extra = axis.LogCycleDivisions >= kFineDivisions ? 1 : 0;
  return std::max(DecimalsFor(value) + extra, 0);
}

/// A step such as 0.25 needs more digits than its size tells.
int LinearDecimals(const AxisState& axis) {
  constexpr int kAnyDecimals = 99;
  const StepGrid grid(axis.StepSize);
  const int asked = std::clamp(axis.LabelDecimals, 0, kAnyDecimals);
  if (!axis.AdjustDecPlaces || grid.SignificantDigits() > kMeantDigits) return asked;
  return std::max(asked, grid.Decimals());
}

/// Digits that tell a value from its neighbours one step away.
int LinearDigits(const AxisState& axis, double value) {
  const StepGrid grid(axis.StepSize);
  if (value == 0 || !std::isfinite(value) || grid.SignificantDigits() == 0) return kGeneralDigits;
  const int last = grid.SignificantDigits() > kMeantDigits
                       ? SplitDecimal(axis.StepSize).exponent - kMeantDigits
                       : grid.LastDigit();
  return std::max(SplitDecimal(std::abs(value)).exponent - last + 1, kGeneralDigits);
}

std::size_t LongestOf(const std::vector<std::string>& labels) {
  std::size_t longest = 0;
  for (const std::string& label : labels) longest = std::max(longest, label.size());
  return longest;
}

/// The decimals that the axis' step needs after division by 10^exponent.
int ScaledDecimals(const AxisState& axis, int exponent) {
  const StepGrid grid(axis.StepSize);
  const int decimals = grid.SignificantDigits() == 0 || grid.SignificantDigits() > kMeantDigits
                           ? LinearDecimals(axis) + exponent
                           : exponent - grid.LastDigit();
  return std::max(decimals, 0);
}

}  // namespace

int DecimalsFor(double x) {
  if (!(x > 0) || !std::isfinite(x)) return 0;
  const double decimal = std::log(1.01 * x) * kLogToDecimal;
  const int whole = static_cast<int>(std::trunc(decimal));
  return decimal < 0 ? 1 - whole : -whole;
}

bool TakesCommonPart(const AxisState& axis) {
  return !axis.ShowAsTime && !axis.LogScale &&
         (axis.Label_format == LabelFormat::General || axis.Label_format == LabelFormat::Fixed ||
          axis.Label_format == LabelFormat::Thousands);
}

std::string TickLabelText(const AxisState& axis, double value) {
  if (axis.ShowAsTime) {
    const std::string text = FormatDay(value, axis.DateTimeFormat);
    return text.empty() && !IsCalendarDay(value) ? GeneralText(value, kGeneralDigits) : text;
  }
  const Precision precision = axis.LogScale
                                  ? Precision{LogDecimals(axis, value)}
                                  : Precision{LinearDecimals(axis), LinearDigits(axis, value)};
  return NumberLabel(axis.Label_format, value, precision);
}

CompactLabelSet CompactLabels(const AxisState& axis, const std::vector<Tick>& ticks) {
  CompactLabelSet plain;
  double largest = 0;
  for (const Tick& tick : ticks) {
    plain.labels.push_back(tick.label);
    if (!tick.label.empty()) largest = std::max(largest, std::abs(tick.value));
  }
  if (!TakesCommonPart(axis) || largest == 0 || !std::isfinite(largest)) return plain;
  const int exponent = SplitDecimal(largest).exponent;
  const int taken = 3 * ((exponent >= 0 ? exponent : exponent - 2) / 3);
  if (taken == 0) return plain;
  CompactLabelSet compact;
  const int decimals = ScaledDecimals(axis, taken);
  if (decimals > kMostDecimals) return plain;
  const long double power = std::pow(10.0L, static_cast<long double>(taken));
  for (const Tick& tick : ticks) {
    const auto scaled = static_cast<double>(tick.value / power);
    compact.labels.push_back(tick.label.empty() ? "" : FixedText(scaled, decimals));
  }
  if (LongestOf(compact.labels) >= LongestOf(plain.labels)) return plain;
  compact.exponent = taken;
  compact.factor = "\u00d710" + Superscript(std::to_string(taken));
  return compact;
}

bool WantsPowerLabels(const AxisState& axis) {
  constexpr int kManyDecades = 6;
  constexpr double kManyZerosBelow = 1e-4;
  constexpr double kManyZerosAbove = 1e6;
  if (!axis.LogScale || axis.ShowAsTime || axis.NarrowLogRange || !(axis.Min > 0)) return false;
  return std::log10(axis.Max) - std::log10(axis.Min) >= kManyDecades ||
         axis.Min < kManyZerosBelow || axis.Max > kManyZerosAbove;
}

std::vector<PowerLabel> PowerLabels(const std::vector<Tick>& ticks) {
  constexpr int kDigits = 4;
  std::vector<PowerLabel> labels;
  for (const Tick& tick : ticks) {
    PowerLabel& label = labels.emplace_back();
    if (tick.label.empty() || !(tick.value > 0) || !std::isfinite(tick.value)) continue;
    const DecimalSplit split = SplitDecimal(tick.value);
    if (split.mantissa != 1) label.base = GeneralText(split.mantissa, kDigits) + "\u00d7";
    label.base += "10";
    label.exponent = std::to_string(split.exponent);
  }
  return labels;
}

std::string Superscript(std::string_view digits) {
  constexpr std::array<const char*, 10> kRaised{"\u2070", "\u00b9", "\u00b2", "\u00b3", "\u2074",
                                                "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
  std::string text;
  for (const char c : digits) {
    if (c >= '0' && c <= '9') {
      text += kRaised[static_cast<std::size_t>(c - '0')];
    } else if (c == '-') {
      text += "\u207b";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace tarnwick
