#include "graph/axes/nice_step.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr long double kLogToDecimal = 0.4342944818L;

/// A finite decimal text without its sign: digits as an integer, and the power of ten of the last digit.
struct DecimalText {
  std::int64_t digits = 0;
  int count = 0;
  int exponent = 0;
};

DecimalText DigitsOf(double value) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
  DecimalText result;
  const std::size_t mark = text.find('e');
  for (const char c : text.substr(0, mark)) {
    if (c < '0' || c > '9') continue;
    result.digits = result.digits * 10 + (c - '0');
    ++result.count;
  }
  const std::size_t sign = text[mark + 1] == '+' ? 1 : 0;
  int exponent = 0;
  std::from_chars(text.data() + mark + 1 + sign, end.ptr, exponent);
  result.exponent = exponent - (result.count - 1);
  return result;
}

long double PowerOfTen(int exponent) {
  constexpr int kExact = 27;
  if (exponent > kExact) return std::pow(10.0L, static_cast<long double>(exponent));
  long double power = 1;
  for (int i = 0; i < exponent; ++i) power *= 10;
  return power;
}

/// value / 10^exponent; negative powers multiply, so that the power itself is exact.
long double DividedByTen(long double value, int exponent) {
  return exponent >= 0 ? value / PowerOfTen(exponent) : value * PowerOfTen(-exponent);
}

/// 10^n / divisor = mantissa x 10^(n + shift).
struct StepDivisor {
  int divisor;
  int mantissa;
  int shift;
};
constexpr std::array<StepDivisor, 6> kStepDivisors{
    {{1, 1, 0}, {2, 5, -1}, {5, 2, -1}, {10, 1, -1}, {20, 5, -2}, {50, 2, -2}}};
constexpr StepDivisor kLastDivisor{100, 1, -2};

NumericRange FitSingleValue(double value, const StepLimits& limits) {
  if (value == 0) return {-1, 1, NiceStep(-1, 1, limits.min_steps)};
  const double wide = std::clamp(1.2 * value, -kLargest, kLargest);
  NumericRange range{std::min(wide, 0.0), std::max(wide, 0.0), 0};
  range.step = NiceStep(range.min, range.max, limits.min_steps);
  const StepGrid grid(range.step);
  // Six fifths of a round value are whole steps, whatever the last binary digit says.
  constexpr long double kRounding = 1e-12L;
  long double count = std::trunc(static_cast<long double>(range.max) / range.step + kRounding);
  // With very few steps the truncated bound could lie below the value itself.
  if (grid.At(count) < value) ++count;
  range.max = std::min(grid.At(count), kLargest);
  return range;
}

bool KeepsStep(long double span, double step, const StepLimits& limits) {
  return step > 0 && std::isfinite(step) && step / span >= 1.0L / limits.max_steps;
}

/// Bounds on whole steps with their margin; the side's own direction of truncation is toward zero.
long double LowerCount(double o_min, const StepGrid& grid, double step) {
  long double count = std::trunc(static_cast<long double>(o_min) / step);
  if (o_min < 0) --count;
  if (o_min - 0.01L * step < grid.At(count)) --count;
  return count;
}

long double UpperCount(double o_max, const StepGrid& grid, double step) {
  long double count = std::trunc(static_cast<long double>(o_max) / step) + 1;
  if (o_max < 0) --count;
  if (o_max + 0.01L * step >= grid.At(count)) ++count;
  return count;
}

void AttractToZero(double o_min, double o_max, NumericRange& range) {
  const long double span = static_cast<long double>(range.max) - range.min;
  if (o_min > 0 && o_min / span < 0.25L) {
    range.min = 0;
  } else if (o_max < 0 && -o_max / span < 0.25L) {
    range.max = 0;
  }
}

}  // namespace

StepLimits WithMinSteps(const StepLimits& limits, std::int32_t min_steps) {
  if (min_steps < 1 || min_steps >= limits.max_steps / 2.5) return limits;
  return {min_steps, limits.max_steps};
}

StepLimits WithMaxSteps(const StepLimits& limits, std::int32_t max_steps) {
  if (max_steps <= limits.min_steps * 2.5 || max_steps > 90) return limits;
  return {limits.min_steps, max_steps};
}

double ScaledByTen(std::int64_t mantissa, int exponent) {
  constexpr std::int64_t kExactInteger = std::int64_t{1} << 53;
  constexpr int kExactPower = 22;
  if (mantissa == 0) return 0;
  if (std::abs(mantissa) <= kExactInteger && std::abs(exponent) <= kExactPower) {
    const double power = static_cast<double>(PowerOfTen(std::abs(exponent)));
    const auto exact = static_cast<double>(mantissa);
    return exponent < 0 ? exact / power : exact * power;
  }
  const std::string text = std::to_string(mantissa) + "e" + std::to_string(exponent);
  double value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    value = std::copysign(exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0,
                          static_cast<double>(mantissa));
  }
  return value;
}

DecimalSplit SplitDecimal(double value) {
  const DecimalText text = DigitsOf(value);
  return {ScaledByTen(text.digits, 1 - text.count), text.exponent + text.count - 1};
}

StepGrid::StepGrid(double step) : step_(step) {
  // A step of more digits is no decimal number someone meant: its multiples are taken in binary.
  constexpr int kMostDigits = 8;
  if (!(step > 0) || !std::isfinite(step)) return;
  const DecimalText text = DigitsOf(step);
  digits_ = text.count;
  decimals_ = std::max(0, -text.exponent);
  last_digit_ = text.exponent;
  if (text.count <= kMostDigits) mantissa_ = text.digits;
}

double StepGrid::At(long double count) const {
  constexpr long double kMostProduct = 9e18L;
  if (count == 0) return 0;
  if (mantissa_ != 0 && std::abs(count) * static_cast<long double>(mantissa_) < kMostProduct) {
    return ScaledByTen(static_cast<std::int64_t>(count) * mantissa_, last_digit_);
  }
  return static_cast<double>(count * step_);
}

double NiceStep(double min, double max, std::int32_t min_steps) {
  const long double span = static_cast<long double>(max) - min;
  if (!(span > 0) || !std::isfinite(span)) return 0;
  long double decimal = std::log(span) * kLogToDecimal;
  if (decimal < 0) decimal -= 1;
  const int exponent = static_cast<int>(std::trunc(1.001L * decimal));
  const long double bases = DividedByTen(span, exponent);
  const auto* found = std::find_if(
      kStepDivisors.begin(), kStepDivisors.end(),
      [&](const StepDivisor& candidate) { return candidate.divisor * bases >= min_steps; });
  const StepDivisor& divisor = found == kStepDivisors.end() ? kLastDivisor : *found;
  return std::clamp(ScaledByTen(divisor.mantissa, exponent + divisor.shift), kSmallest, kLargest);
}

double FinestStep(double min, double max) {
  const double farthest = std::max(std::abs(min), std::abs(max));
  const double spacing = farthest - std::nextafter(farthest, 0.0);
  const double least = std::clamp(10 * spacing, kSmallest, kLargest);
  const DecimalSplit split = SplitDecimal(least);
  for (const int mantissa : {1, 2, 5}) {
    if (mantissa >= split.mantissa) return ScaledByTen(mantissa, split.exponent);
  }
  return std::clamp(ScaledByTen(1, split.exponent + 1), kSmallest, kLargest);
}

NumericRange FitNumericRange(double o_min, double o_max, double step, StepChoice choice,
                             const StepLimits& limits) {
  if (!(o_min <= o_max)) throw Error("Impossible: oMin > oMax in SetMinMax!");
  if (o_min == o_max) return FitSingleValue(o_min, limits);
  const long double span = static_cast<long double>(o_max) - o_min;
  const bool keep = choice == StepChoice::Manual && KeepsStep(span, step, limits);
  const double nice = std::max(NiceStep(o_min, o_max, limits.min_steps), FinestStep(o_min, o_max));
  NumericRange range{o_min, o_max, keep ? step : nice};
  const StepGrid grid(range.step);
  // Where a step is finer than the doubles around it, the data's own extremes are the tightest bounds.
  range.min = std::clamp(grid.At(LowerCount(o_min, grid, range.step)), -kLargest, o_min);
  range.max = std::clamp(grid.At(UpperCount(o_max, grid, range.step)), o_max, kLargest);
  AttractToZero(o_min, o_max, range);
  if (!(range.min < range.max)) throw Error("SetMinMax failed");
  return range;
}

}  // namespace tarnwick
