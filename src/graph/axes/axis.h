// One of a graph's three axes: visible range, tick step, label settings, placement, autoscale. Knows its owner only
// through AxisOwner; draws nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "graph/axes/axis_scale.h"
#include "graph/axes/axis_state.h"
#include "graph/axes/tick.h"

namespace tarnwick {

/// What an axis asks of the graph that owns it.
class AxisOwner {
 public:
  virtual ~AxisOwner() = default;
  virtual void AxisChanged() = 0;       ///< a property changed: redraw
  virtual void AxisRangeChanged() = 0;  ///< range or step changed: recompute all scales, redraw
  virtual bool AxisInUse(AxisId axis) const = 0;
  virtual std::int32_t MinSteps() const = 0;
  virtual std::int32_t MaxSteps() const = 0;
  /// Pixels along the axis: client size less the two margins.
  virtual int PixelLength(AxisId axis) const = 0;
  /// Left margin for X, top margin for Y and Y2; plus the frame offset of a child graph.
  virtual int PixelOrigin(AxisId axis) const = 0;
  /// The present moment as a day number in local time, the upper end of a time axis without data.
  virtual double CurrentDay() const;
};

/// Setters store the value and tell the owner, AxisChanged unless their comment says more.
class TAxis {
 public:
  TAxis(AxisOwner& owner, AxisId id);
  TAxis(const TAxis&) = delete;
  TAxis& operator=(const TAxis&) = delete;

  AxisId Id() const { return id_; }
  const AxisState& State() const { return state_; }
  /// Takes over a whole state without telling the owner, who rescales afterwards.
  void SetState(const AxisState& state);

  // properties
  const std::string& Title() const { return state_.Title; }
  void SetTitle(const std::string& title);
  double Min() const { return state_.Min; }
  double Max() const { return state_.Max; }
  /// Switch AutoSizing off. An equal (or not finite) value is otherwise ignored; else AxisRangeChanged. On a time axis
  /// without data the data extreme follows.
  void SetMin(double min);
  void SetMax(double max);
  double StepSize() const { return state_.StepSize; }
  /// Switches AutoStepping off. An equal (or not finite) value is otherwise ignored; else AxisRangeChanged.
  void SetStepSize(double step);
  bool AutoSizing() const { return state_.AutoSizing; }
  /// True sets AutoStepping too and has the graph rescaled.
  void SetAutoSizing(bool on);
  bool AutoStepping() const { return state_.AutoStepping; }
  void SetAutoStepping(bool on);
  bool LogScale() const { return state_.LogScale; }
  /// Switched on with Min <= 0: Max becomes 10 if it is not positive, then Min 0.001 x Max. AxisRangeChanged.
  void SetLogScale(bool on);
  std::int32_t LogCycleDivisions() const { return state_.LogCycleDivisions; }
  void SetLogCycleDivisions(std::int32_t divisions);  ///< snapped; switches DivisionLabels on
  double MinScaleLength() const { return state_.MinScaleLength; }
  /// Tells the owner only when the value changed or the range is now too short.
  void SetMinScaleLength(double length);
  std::int32_t LabelDecimals() const { return state_.LabelDecimals; }
  void SetLabelDecimals(std::int32_t decimals);
  bool AdjustDecPlaces() const { return state_.AdjustDecPlaces; }
  void SetAdjustDecPlaces(bool on);
  tarnwick::LabelFormat LabelFormat() const { return state_.Label_format; }
  void SetLabelFormat(tarnwick::LabelFormat format);
  bool ShowAsTime() const { return state_.ShowAsTime; }
  void SetShowAsTime(bool on);  ///< AxisRangeChanged: the autoscale is another one
  const std::string& DateTimeFormat() const { return state_.DateTimeFormat; }
  void SetDateTimeFormat(const std::string& format);
  tarnwick::DateTickType DateTickType() const { return state_.TickType; }
  void SetDateTickType(
      tarnwick::DateTickType type);  ///< AxisRangeChanged: the range rounds to the unit
  bool ShowAxis() const { return state_.ShowAxis; }
  void SetShowAxis(bool on);
  bool Reversed() const { return state_.Reversed; }
  void SetReversed(bool on);
  tarnwick::OffsetType OffsetType() const { return state_.Offset_type; }
  void SetOffsetType(tarnwick::OffsetType type);
  double Offset() const { return state_.Offset; }
  void SetOffset(double offset);
  bool Gridlines() const { return state_.Gridlines; }
  void SetGridlines(bool on);
  bool EnableAutoTitle() const { return state_.EnableAutoTitle; }
  void SetEnableAutoTitle(bool on);

  // computed
  double PixelsPerUnit() const;  ///< at most the largest double
  bool NarrowLogRange() const { return state_.NarrowLogRange; }
  bool DivisionLabels() const { return state_.DivisionLabels; }
  bool AxisInUse() const { return owner_.AxisInUse(id_); }

  /// The extremes of the data on this axis, given by the graph before a rescale.
  void SetDataExtremes(double o_min, double o_max);

  // scaling
  /// Rescales to the data extremes, or repairs the manual range of an axis without data. True when Min or Max may have
  /// changed. Throws Error (SetMinMax).
  bool UpdateScale();
  void SetMinMax();      ///< numeric autoscale; throws Error
  void SetTimeMinMax();  ///< calendar autoscale; nothing happens unless oMin < oMax and oMin >= 1
  /// A nice step for the range. Without a range: AutoSizing and AutoStepping on, answers the present step.
  double CalcTickStep();
  /// Pixels per unit for the owner's size. Throws Error "<Title>Axis MIN exceeds axis MAX" when the range cannot be
  /// drawn (Max not above Min, not finite, or a logarithmic axis that reaches zero).
  void CalcScale();

  // pixels, valid after CalcScale
  AxisScale Scale() const;
  double PixelToValue(double pixel) const { return Scale().ValueAt(pixel); }
  int ValueToPixel(double value) const { return Scale().PixelOf(value); }

  std::vector<Tick> Ticks() const;

 private:
  StepLimits Limits() const { return {owner_.MinSteps(), owner_.MaxSteps()}; }
  template <class Value>
  void Store(Value AxisState::*field, const Value& value);
  void SetBound(double AxisState::*bound, double AxisState::*extreme, double value);
  bool FitToData();
  void FitLog();
  bool RepairRange();
  bool KeepLogRangePositive();
  void AdjustDecimals();

  AxisOwner& owner_;
  AxisId id_;
  AxisState state_;
  long double pixels_per_unit_ = 1;
};

}  // namespace tarnwick
