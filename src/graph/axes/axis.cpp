#include "graph/axes/axis.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>
#include <utility>

#include "base/day_number.h"
#include "base/error.h"
#include "graph/axes/calendar_scale.h"
#include "graph/axes/log_divisions.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {

double AxisOwner::CurrentDay() const {
  using std::chrono::system_clock;
  const std::time_t now = system_clock::to_time_t(system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  return JoinDay({.year = local.tm_year + 1900,
                  .month = local.tm_mon + 1,
                  .day = local.tm_mday,
                  .hour = local.tm_hour,
                  .minute = local.tm_min,
                  .second = local.tm_sec});
}

TAxis::TAxis(AxisOwner& owner, AxisId id) : owner_(owner), id_(id), state_(DefaultAxisState(id)) {}

void TAxis::SetState(const AxisState& state) {
  state_ = state;
  state_.LogCycleDivisions = SnapLogDivisions(state.LogCycleDivisions);
}

void TAxis::SetLook(const AxisLook& look) {
  static_cast<AxisLook&>(state_) = look;
  owner_.AxisChanged();
}

void TAxis::SetAdjustDecPlaces(bool on) {
  state_.AdjustDecPlaces = on;
  AdjustDecimals();
  owner_.AxisChanged();
}

void TAxis::SetLogCycleDivisions(std::int32_t divisions) {
  state_.DivisionLabels = true;
  state_.LogCycleDivisions = SnapLogDivisions(divisions);
  owner_.AxisChanged();
}

void TAxis::SetBound(double AxisState::*bound, double AxisState::*extreme, double value) {
  state_.AutoSizing = false;
  if (!std::isfinite(value) || state_.*bound == value) return;
  state_.*bound = value;
  if (state_.ShowAsTime && !AxisInUse()) state_.*extreme = value;
  owner_.AxisRangeChanged();
}

void TAxis::SetMin(double min) {
  SetBound(&AxisState::Min, &AxisState::oMin, min);
}
void TAxis::SetMax(double max) {
  SetBound(&AxisState::Max, &AxisState::oMax, max);
}

void TAxis::SetStepSize(double step) {
  state_.AutoStepping = false;
  if (!std::isfinite(step) || state_.StepSize == step) return;
  state_.StepSize = step;
  owner_.AxisRangeChanged();
}

void TAxis::SetAutoSizing(bool on) {
  state_.AutoSizing = on;
  if (!on) return owner_.AxisChanged();
  state_.AutoStepping = true;
  owner_.AxisRangeChanged();
}

void TAxis::SetAutoStepping(bool on) {
  state_.AutoStepping = on;
  if (!on) return owner_.AxisChanged();
  owner_.AxisRangeChanged();
}

void TAxis::SetLogScale(bool on) {
  state_.LogScale = on;
  KeepLogRangePositive();
  owner_.AxisRangeChanged();
}

void TAxis::SetMinScaleLength(double length) {
  const bool changed = state_.MinScaleLength != length;
  state_.MinScaleLength = length;
  if (changed || state_.Max - state_.Min < length) owner_.AxisRangeChanged();
}

void TAxis::SetShowAsTime(bool on) {
  state_.ShowAsTime = on;
  owner_.AxisRangeChanged();
}

void TAxis::SetDateTickType(tarnwick::DateTickType type) {
  state_.TickType = type;
  owner_.AxisRangeChanged();
}

void TAxis::SetDataExtremes(double o_min, double o_max) {
  state_.oMin = o_min;
  state_.oMax = o_max;
}

bool TAxis::UpdateScale() {
  if (state_.oMax - state_.oMin < state_.MinScaleLength) {
    state_.oMax = state_.oMin + state_.MinScaleLength;
  }
  const bool by_calendar = state_.ShowAsTime && !state_.LogScale;
  if (by_calendar && StepDays(state_.TickType) > 0) state_.StepSize = StepDays(state_.TickType);
  bool changed = false;
  if (!AxisInUse()) {
    changed = RepairRange();
  } else if (state_.AutoSizing && std::isfinite(state_.oMin) && std::isfinite(state_.oMax)) {
    changed = FitToData();
  }
  if (KeepLogRangePositive()) changed = true;
  AdjustDecimals();
  return changed;
}

bool TAxis::FitToData() {
  if (state_.LogScale) {
    if (state_.oMin <= 0) return false;
    FitLog();
  } else if (state_.ShowAsTime) {
    SetTimeMinMax();
  } else {
    SetMinMax();
  }
  return state_.Min != state_.oMin || state_.Max != state_.oMax;
}

void TAxis::SetMinMax() {
  const StepChoice choice = state_.AutoStepping ? StepChoice::Automatic : StepChoice::Manual;
  const NumericRange range =
      FitNumericRange(state_.oMin, state_.oMax, state_.StepSize, choice, Limits());
  state_.Min = range.min;
  state_.Max = range.max;
  state_.StepSize = range.step;
}

void TAxis::SetTimeMinMax() {
  if (state_.TickType >= DateTickType::Automatic) return SetMinMax();
  if (!IsCalendarRange(state_.oMin, state_.oMax)) return;
  const CalendarRange range = FitCalendarRange(state_.oMin, state_.oMax, state_.TickType);
  state_.Min = range.min;
  state_.Max = range.max;
}

void TAxis::FitLog() {
  const LogRange current{state_.Min,
                         state_.Max,
                         state_.StepSize,
                         state_.LogCycleDivisions,
                         state_.NarrowLogRange,
                         state_.DivisionLabels};
  const StepChoice choice = state_.AutoStepping ? StepChoice::Automatic : StepChoice::Manual;
  const LogRange range = FitLogRange(state_.oMin, state_.oMax, current, choice, Limits());
  state_.Min = range.min;
  state_.Max = range.max;
  state_.StepSize = range.step;
  state_.LogCycleDivisions = range.divisions;
  state_.NarrowLogRange = range.narrow;
  state_.DivisionLabels = range.division_labels;
}

double TAxis::CalcTickStep() {
  const double step = NiceStep(state_.Min, state_.Max, owner_.MinSteps());
  if (step > 0) return step;
  state_.AutoSizing = true;
  state_.AutoStepping = true;
  return state_.StepSize;
}

bool TAxis::RepairRange() {
  const double min = state_.Min;
  const double max = state_.Max;
  if (state_.LogScale) {
    if (state_.Min >= state_.Max) std::swap(state_.Min, state_.Max);
    if (state_.Max <= 0) {
      state_.Min = 1;
      state_.Max = 10;
    } else if (state_.Min <= 0) {
      state_.Min = state_.Max / 10;
    }
    state_.DivisionLabels =
        state_.Min < state_.Max &&
        DivisionsLabelled(state_.Min, state_.Max, state_.LogCycleDivisions, state_.NarrowLogRange);
  } else if (state_.ShowAsTime && (state_.AutoSizing || !(state_.Min < state_.Max))) {
    constexpr int kUnitsShown = 5;
    const double unit = StepDays(state_.TickType);
    const double step = unit > 0 ? unit : state_.StepSize > 0 ? state_.StepSize : 1;
    state_.Max = owner_.CurrentDay();
    state_.Min = state_.Max - kUnitsShown * step;
  }
  return state_.Min != min || state_.Max != max;
}

bool TAxis::KeepLogRangePositive() {
  constexpr double kDefaultMax = 10;
  constexpr double kShareOfMax = 0.001;
  if (!state_.LogScale || state_.Min > 0) return false;
  if (!(state_.Max > 0)) state_.Max = kDefaultMax;
  state_.Min = std::max(kShareOfMax * state_.Max, std::numeric_limits<double>::denorm_min());
  return true;
}

void TAxis::AdjustDecimals() {
  if (state_.AdjustDecPlaces)
    state_.LabelDecimals = std::max(0, DecimalsFor(1.01 * state_.StepSize));
}

void TAxis::CalcScale() {
  if (!IsDrawable(state_)) throw Error(state_.Title + "Axis MIN exceeds axis MAX");
  pixels_per_unit_ = tarnwick::PixelsPerUnit(state_, std::max(1, owner_.PixelLength(id_)));
}

double TAxis::PixelsPerUnit() const {
  constexpr long double kLargest = std::numeric_limits<double>::max();
  return static_cast<double>(std::min(pixels_per_unit_, kLargest));
}

AxisScale TAxis::Scale() const {
  return ScaleOf(state_, id_, owner_.PixelOrigin(id_), pixels_per_unit_);
}

std::vector<Tick> TAxis::Ticks() const {
  return MakeTicks(state_, Limits());
}

}  // namespace tarnwick
