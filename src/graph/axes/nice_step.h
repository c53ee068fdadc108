// Round tick steps and the numeric autoscale, over plain numbers. Knows no axis. Powers of ten are exact; quotients and
// differences are taken in long double.
#pragma once

#include <cstdint>

namespace tarnwick {

/// How many tick intervals an axis shall have.
struct StepLimits {
  std::int32_t min_steps = 5;
  std::int32_t max_steps = 50;
  bool operator==(const StepLimits&) const = default;
};

/// `limits` with a new value, or unchanged when the value is refused: MinSteps is at least 1 and below MaxSteps / 2.5,
/// MaxSteps is above 2.5 MinSteps and at most 90.
StepLimits WithMinSteps(const StepLimits& limits, std::int32_t min_steps);
StepLimits WithMaxSteps(const StepLimits& limits, std::int32_t max_steps);

/// mantissa x 10^exponent as the nearest double (0 and infinity beyond the range of doubles).
double ScaledByTen(std::int64_t mantissa, int exponent);

/// A positive finite number as mantissa x 10^exponent with 1 <= mantissa < 10; the decimal text decides, so that 1000
/// has mantissa 1 and 0.3 has mantissa 3.
struct DecimalSplit {
  double mantissa = 1;
  int exponent = 0;
};
DecimalSplit SplitDecimal(double value);

/// The multiples of a step, each the double nearest to the decimal product: the third of 0.1 is 0.3. Zero is +0.
class StepGrid {
 public:
  explicit StepGrid(double step);
  double At(long double count) const;
  /// Digits after the point that every multiple needs, and significant digits of the step itself.
  int Decimals() const { return decimals_; }
  int SignificantDigits() const { return digits_; }
  /// The power of ten of the step's last digit: -2 for 0.25, 3 for 25000.
  int LastDigit() const { return last_digit_; }

 private:
  double step_;
  std::int64_t mantissa_ =
      0;  ///< step = mantissa x 10^exponent, 0 when the step has too many digits
  int last_digit_ = 0;
  int decimals_ = 0;
  int digits_ = 0;
};

/// The largest of 10^n x {1, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01} that gives at least `min_steps` intervals over the range,
/// n being the truncated decimal exponent of max - min (one less below 1). 0 when not min < max.
double NiceStep(double min, double max, std::int32_t min_steps);

/// The smallest step of those forms whose multiples between `min` and `max` are ten doubles or more apart.
double FinestStep(double min, double max);

/// A fitted range and its step.
struct NumericRange {
  double min = 0;
  double max = 1;
  double step = 0.2;
};

enum class StepChoice { Automatic, Manual };

/// The numeric autoscale: the data's extremes widened to whole steps with a margin of a hundredth of a step, and drawn
/// to zero when zero is near. A manual `step` is kept while it gives at most max_steps intervals. One value gives a range
/// from zero to it, or -1 to 1. No step is finer than FinestStep. Throws Error "Impossible: oMin > oMax in SetMinMax!" and
/// "SetMinMax failed". `o_min`
/// and `o_max` must be finite.
NumericRange FitNumericRange(double o_min, double o_max, double step, StepChoice choice,
                             const StepLimits& limits);

}  // namespace tarnwick
