#include "graph/axes/tick.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "base/day_number.h"
#include "graph/axes/calendar_scale.h"
#include "graph/axes/log_divisions.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {
namespace {

using Ticks = std::vector<Tick>;

/// In days: the resolution of day numbers' texts.
constexpr double kHalfMillisecond = 0.5 / 86'400'000;

/// Whole multiples of a step within a range, both ends included.
struct Multiples {
  long double first = 0;
  long double last = -1;
  long double Count() const { return last - first + 1; }
};

Multiples MultiplesWithin(double min, double max, double step) {
  // Bounds that were meant to lie on a multiple may miss it by the last digit; that is much where the step is small beside them.
  constexpr long double kRounding = 1e-9L;
  constexpr long double kLastDigit = std::numeric_limits<double>::epsilon();
  constexpr long double kMostRounding = 0.1L;
  if (!(step > 0) || !std::isfinite(step)) return {};
  const long double low = static_cast<long double>(min) / step;
  const long double high = static_cast<long double>(max) / step;
  const auto rounding = [&](long double multiple) {
    return std::clamp(std::abs(multiple) * kLastDigit, kRounding, kMostRounding);
  };
  return {std::ceil(low - rounding(low)), std::floor(high + rounding(high))};
}

/// The step that is drawn: the axis' own unless it gives too many ticks, or fewer than a scale can be read from.
double DrawnStep(const AxisState& axis, const StepLimits& limits) {
  const Multiples own = MultiplesWithin(axis.Min, axis.Max, axis.StepSize);
  const bool usable = own.Count() >= 2 && own.Count() <= kMostTicks;
  const double finest = FinestStep(axis.Min, axis.Max);
  if (usable && axis.StepSize >= finest) return axis.StepSize;
  const double nice = NiceStep(axis.Min, axis.Max, limits.min_steps);
  const double coarse = std::max(nice, finest);
  // In a range that holds no two ticks of the finest step a doubtful scale is better than none.
  if (MultiplesWithin(axis.Min, axis.Max, coarse).Count() >= 2) return coarse;
  return usable ? axis.StepSize : nice;
}

Ticks LinearTicks(const AxisState& axis, const StepLimits& limits) {
  AxisState drawn = axis;
  drawn.LogScale = false;
  drawn.StepSize = DrawnStep(axis, limits);
  if (drawn.StepSize != axis.StepSize && axis.AdjustDecPlaces) drawn.LabelDecimals = 0;
  const StepGrid grid(drawn.StepSize);
  const Multiples multiples = MultiplesWithin(axis.Min, axis.Max, drawn.StepSize);
  const int count = static_cast<int>(std::clamp<long double>(multiples.Count(), 0, kMostTicks));
  Ticks ticks;
  for (int i = 0; i < count; ++i) {
    const double value = std::clamp(grid.At(multiples.first + i), axis.Min, axis.Max);
    // A step finer than the doubles around it repeats values.
    if (!ticks.empty() && ticks.back().value == value) continue;
    ticks.push_back({value, TickLabelText(drawn, value), true});
  }
  return ticks;
}

/// Every how many decades one is drawn, so that a range of hundreds of them stays readable.
int DecadeStride(int decades) {
  constexpr std::array kStrides{1, 2, 5, 10, 20, 50};
  constexpr int kMostDecades = 40;
  return *std::find_if(kStrides.begin(), kStrides.end() - 1,
                       [&](int stride) { return decades / stride <= kMostDecades; });
}

void AddLogTick(const AxisState& axis, const Tick& tick, Ticks& ticks) {
  if (tick.value >= axis.Min && tick.value <= axis.Max) ticks.push_back(tick);
}

/// The divisions of one decade, and minor ticks at the whole mantissas that are no divisions.
void AddDecade(const AxisState& axis, int exponent, bool with_minor, Ticks& ticks) {
  const auto table = LogDivisionTable(axis.LogCycleDivisions);
  for (const double mantissa : table.first(table.size() - 1)) {
    const double value = ScaledByTen(std::llround(mantissa * 10), exponent - 1);
    const bool labelled = mantissa == 1 || axis.DivisionLabels;
    AddLogTick(axis, {value, labelled ? TickLabelText(axis, value) : "", true}, ticks);
  }
  for (int whole = 2; with_minor && whole < 10; ++whole) {
    if (std::find(table.begin(), table.end(), whole) != table.end()) continue;
    AddLogTick(axis, {ScaledByTen(whole, exponent), "", false}, ticks);
  }
}

Ticks LogTicks(const AxisState& axis) {
  constexpr int kMostDecadesWithMinor = 12;
  const int first = SplitDecimal(axis.Min).exponent;
  const int last = SplitDecimal(axis.Max).exponent;
  const int stride = DecadeStride(last - first);
  Ticks ticks;
  for (int exponent = first; exponent <= last; ++exponent) {
    if (stride == 1) {
      AddDecade(axis, exponent, last - first <= kMostDecadesWithMinor, ticks);
    } else if (exponent % stride == 0) {
      const double value = ScaledByTen(1, exponent);
      AddLogTick(axis, {value, TickLabelText(axis, value), true}, ticks);
    }
  }
  std::sort(ticks.begin(), ticks.end(),
            [](const Tick& left, const Tick& right) { return left.value < right.value; });
  return ticks;
}

/// Linear bounds have linear ticks; so has a range that holds less than two labelled divisions.
bool ReadsLinearly(const AxisState& axis, const Ticks& log_ticks) {
  constexpr double kDecade = 10;
  if (axis.NarrowLogRange && axis.Max / axis.Min <= kDecade) return true;
  return std::count_if(log_ticks.begin(), log_ticks.end(),
                       [](const Tick& tick) { return !tick.label.empty(); }) < 2;
}

Ticks UnitTicks(const AxisState& axis, DateTickType type) {
  Ticks ticks;
  const std::int64_t last = UnitIndex(axis.Max, type);
  for (std::int64_t index = UnitIndex(axis.Min, type); index <= last; ++index) {
    const double value = UnitStart(index, type);
    if (value < axis.Min - kHalfMillisecond || value > axis.Max + kHalfMillisecond) continue;
    ticks.push_back({std::clamp(value, axis.Min, axis.Max), TickLabelText(axis, value), true});
  }
  return ticks;
}

DateTickType Coarser(DateTickType type) {
  return static_cast<DateTickType>(static_cast<int>(type) + 1);
}

DateTickType Finer(DateTickType type) {
  return static_cast<DateTickType>(static_cast<int>(type) - 1);
}

/// Ticks of the axis' unit; of a coarser one where there would be too many, of a finer one where there would be none to
/// read a scale from (a format made for the coarser unit would then repeat itself, so one that fits is taken).
Ticks CalendarTicks(const AxisState& axis) {
  const double span = axis.Max - axis.Min;
  DateTickType type = axis.TickType;
  while (type < DateTickType::Century && span > kMostTicks * StepDays(type)) type = Coarser(type);
  Ticks ticks = UnitTicks(axis, type);
  if (ticks.size() >= 2) return ticks;
  AxisState finer = axis;
  finer.DateTimeFormat = SuggestDateFormat(axis.Min, axis.Max);
  while (type > DateTickType::Minute && ticks.size() < 2) {
    type = Finer(type);
    ticks = UnitTicks(finer, type);
  }
  return ticks;
}

/// A step of the clock in milliseconds, or of the calendar in months; the other is 0.
struct ClockStep {
  std::int64_t milliseconds = 0;
  std::int64_t months = 0;

  double Days() const {
    constexpr double kDaysInMonth = 365.2425 / 12;
    constexpr double kMillisecondsInDay = 86'400'000;
    return months > 0 ? static_cast<double>(months) * kDaysInMonth
                      : static_cast<double>(milliseconds) / kMillisecondsInDay;
  }
  /// The number of the step that `day` lies in: of months since the year 0, of days since a Sunday.
  std::int64_t IndexOf(double day) const {
    if (months > 0) return UnitIndex(day, DateTickType::Month) / months;
    return static_cast<std::int64_t>(std::floor((day - 1) / Days()));
  }
  double Moment(std::int64_t index) const {
    if (months > 0) return UnitStart(index * months, DateTickType::Month);
    return 1 + static_cast<double>(index) * Days();
  }
};

/// The longest step that `most_days` hold; none below a millisecond.
std::optional<ClockStep> ClockStepWithin(double most_days) {
  constexpr std::array<int, 13> kMonths{12000, 6000, 2400, 1200, 600, 240, 120,
                                        60,    24,   12,   6,    3,   1};
  constexpr std::array<int, 15> kSeconds{604800, 172800, 86400, 43200, 21600, 10800, 7200, 3600,
                                         1800,   900,    600,   300,   120,   60,    30};
  constexpr std::array<int, 14> kMilliseconds{15000, 10000, 5000, 2000, 1000, 500, 200,
                                              100,   50,    20,   10,   5,    2,   1};
  std::vector<ClockStep> steps;
  steps.reserve(kMonths.size() + kSeconds.size() + kMilliseconds.size());
  for (const int months : kMonths) steps.push_back({0, months});
  for (const int seconds : kSeconds) steps.push_back({seconds * std::int64_t{1000}, 0});
  for (const int milliseconds : kMilliseconds) steps.push_back({milliseconds, 0});
  const auto found = std::find_if(steps.begin(), steps.end(),
                                  [&](const ClockStep& step) { return step.Days() <= most_days; });
  return found == steps.end() ? std::nullopt : std::optional(*found);
}

/// Those of a time axis of the unit "automatic"; none where fewer than two would show.
Ticks ClockTicks(const AxisState& axis, const StepLimits& limits) {
  const double min = std::max(axis.Min, JoinDay({.year = 1, .month = 1, .day = 1}));
  const double max = std::min(axis.Max, JoinDay({.year = 9999, .month = 12, .day = 31}));
  const std::optional<ClockStep> step =
      ClockStepWithin((max - min) / std::max(limits.min_steps, 1));
  if (!(min < max) || !step) return {};
  Ticks ticks;
  for (std::int64_t index = step->IndexOf(min);; ++index) {
    const double value = step->Moment(index);
    if (value > max + kHalfMillisecond) break;
    if (value < min - kHalfMillisecond) continue;
    ticks.push_back({std::clamp(value, min, max), TickLabelText(axis, value), true});
  }
  return ticks.size() < 2 ? Ticks{} : ticks;
}

Ticks TimeTicks(const AxisState& axis, const StepLimits& limits) {
  if (axis.TickType >= DateTickType::Automatic) return ClockTicks(axis, limits);
  return IsCalendarDay(axis.Min) && IsCalendarDay(axis.Max) ? CalendarTicks(axis) : Ticks{};
}

/// True when neighbouring ticks cannot be told apart by their labels.
bool LabelsRepeat(const Ticks& ticks) {
  return std::adjacent_find(ticks.begin(), ticks.end(), [](const Tick& left, const Tick& right) {
           return !left.label.empty() && left.label == right.label;
         }) != ticks.end();
}

/// Thousandths where every tick stands at a whole second.
void LeaveOutZeroThousandths(Ticks& ticks) {
  constexpr std::string_view kNone = ".000";
  const bool whole = std::ranges::all_of(
      ticks, [&](const Tick& tick) { return tick.label.empty() || tick.label.ends_with(kNone); });
  if (!whole) return;
  for (Tick& tick : ticks) {
    if (!tick.label.empty()) tick.label.resize(tick.label.size() - kNone.size());
  }
}

/// A format of days says nothing at ticks of hours, after zooming in for instance.
void TellMomentsApart(const AxisState& axis, Ticks& ticks) {
  if (!axis.ShowAsTime) return;
  AxisState written = axis;
  if (LabelsRepeat(ticks)) {
    written.DateTimeFormat = SuggestDateFormat(axis.Min, axis.Max);
    for (Tick& tick : ticks) {
      if (!tick.label.empty()) tick.label = TickLabelText(written, tick.value);
    }
  }
  if (written.DateTimeFormat == kToTheMillisecond) LeaveOutZeroThousandths(ticks);
}

Ticks LogOrLinearTicks(const AxisState& axis, const StepLimits& limits) {
  if (axis.Min <= 0) return {};
  const Ticks ticks = LogTicks(axis);
  return ReadsLinearly(axis, ticks) ? LinearTicks(axis, limits) : ticks;
}

}  // namespace

std::vector<Tick> MakeTicks(const AxisState& axis, const StepLimits& limits) {
  if (!(axis.Min < axis.Max) || !std::isfinite(axis.Min) || !std::isfinite(axis.Max)) return {};
  Ticks ticks;
  if (axis.LogScale) {
    ticks = LogOrLinearTicks(axis, limits);
  } else {
    if (axis.ShowAsTime) ticks = TimeTicks(axis, limits);
    if (ticks.size() < 2) ticks = LinearTicks(axis, limits);
  }
  TellMomentsApart(axis, ticks);
  return ticks;
}

}  // namespace tarnwick
