// One of a graph's three axes: visible range, tick step, label settings, placement, autoscale. Knows its owner only
// through AxisOwner; draws nothing.
#pragma once

#include <cstdint>
#include <type_traits>
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

  const AxisLook& Look() const { return state_; }
  void SetLook(const AxisLook& look);

  // properties with rules of their own
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
  bool AdjustDecPlaces() const { return state_.AdjustDecPlaces; }
  void SetAdjustDecPlaces(bool on);
  bool ShowAsTime() const { return state_.ShowAsTime; }
  void SetShowAsTime(bool on);  ///< AxisRangeChanged: the autoscale is another one
  tarnwick::DateTickType DateTickType() const { return state_.TickType; }
  void SetDateTickType(
      tarnwick::DateTickType type);  ///< AxisRangeChanged: the range rounds to the unit

  // computed
  double PixelsPerUnit() const;  ///< at most the largest double
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

  /// Valid after CalcScale.
  AxisScale Scale() const;

  std::vector<Tick> Ticks() const;

 private:
  StepLimits Limits() const { return {owner_.MinSteps(), owner_.MaxSteps()}; }
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

/// Changes one value of an axis' look.
template <class Value>
void SetLook(TAxis& axis, Value AxisLook::*property, const std::type_identity_t<Value>& value) {
  AxisLook look = axis.Look();
  look.*property = value;
  axis.SetLook(look);
}

}  // namespace tarnwick
