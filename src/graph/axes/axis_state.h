// What one axis keeps: range, tick step, label and calendar settings, placement. Plain values, read and written as they
// are; the rules that hold between them live in TAxis and in the scaling functions.
#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

enum class AxisId : std::uint8_t { X = 0, Y = 1, Y2 = 2 };

/// Number format of tick labels, as stored (key "LabelFormat").
enum class LabelFormat : std::int32_t {
  General = 0,     ///< shortest text, exponent form for tiny and huge values
  Scientific = 1,  ///< mantissa with LabelDecimals digits and exponent, 1.5E-3
  Fixed = 2,       ///< LabelDecimals digits after the point
  Thousands = 3,   ///< Fixed with blanks between groups of three digits
  Engineering =
      4,  ///< mantissa 1..999 and an exponent that is a multiple of 3, as an SI prefix where one exists
  Percent = 5,     ///< value x 100 with "%"
  Hexadecimal = 6  ///< whole numbers to base 16
};

/// Where an axis' line crosses the other axis: at that axis' Min, Max, a percentage of its range, or a value of it.
enum class OffsetType : std::uint8_t { OtherMin = 0, OtherMax = 1, Percent = 2, Value = 3 };

/// Calendar unit of a time axis' ticks.
enum class DateTickType : std::uint8_t {
  Minute,
  FiveMinutes,
  HalfHour,
  Hour,
  Day,
  Week,
  Month,
  TwoMonths,
  Quarter,
  Year,
  Decade,
  Century,
  Automatic
};

/// How an axis looks where it stands: values that no other hangs on.
struct AxisLook {
  std::string Title;
  std::int32_t LabelDecimals = 1;  ///< renewed by every rescale while AdjustDecPlaces is on
  LabelFormat Label_format = LabelFormat::Fixed;
  std::string DateTimeFormat = "dd-mmm";
  bool ShowAxis = true;
  bool Reversed = false;
  OffsetType Offset_type = OffsetType::OtherMin;
  double Offset = 0;
  bool Gridlines = true;
  bool EnableAutoTitle = true;
  bool operator==(const AxisLook&) const = default;
};

/// Everything an axis keeps, as a value. Stored fields first, computed ones after. Time values are day numbers.
struct AxisState : AxisLook {
  bool AdjustDecPlaces = true;
  std::int32_t LogCycleDivisions = 2;  ///< one of 0, 1, 2, 5, 7, 9 (see SnapLogDivisions)
  bool LogScale = false;
  double Max = 1;
  double Min = 0;
  double StepSize = 0.2;  ///< data units, days on a time axis
  double MinScaleLength = 0;
  bool ShowAsTime = false;
  DateTickType TickType = DateTickType::Minute;
  bool AutoSizing = true;
  bool AutoStepping = true;

  double oMin = 0;  ///< extremes of the data on this axis
  double oMax = 0;
  bool NarrowLogRange = false;
  bool DivisionLabels = true;
  bool operator==(const AxisState&) const = default;
};

/// What a new graph gives to its axis `id`.
AxisState DefaultAxisState(AxisId id);

/// Gives `target` the range and tick step that `from` has, with the switches that keep them automatic. Everything else of
/// `target`, logarithmic scale included, stays.
void TakeScale(AxisState& target, const AxisState& from);

/// The value of the other axis at which this axis' line stands (OffsetType rule).
double CrossingValue(const AxisState& axis, const AxisState& other);

}  // namespace tarnwick
