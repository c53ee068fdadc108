#include "graph/axes/axis_labels.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/day_number.h"
#include "graph/axes/calendar_scale.h"
#include "graph/axes/common_part.h"
#include "graph/axes/nice_step.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {
namespace {

/// Labels longer than this read better with their power of ten taken out.
constexpr qsizetype kLongLabel = 6;

RichText LabelText(const AxisState& axis, const std::string& label) {
  const QString text = QString::fromStdString(label);
  return {axis.ShowAsTime ? text : WithMinusSigns(text), {}};
}

LabelSet PlainSet(const AxisState& axis, const std::vector<Tick>& ticks) {
  LabelSet set;
  for (const Tick& tick : ticks) set.texts.push_back(LabelText(axis, tick.label));
  return set;
}

/// Such as "1.5E-19".
bool HasPowers(const LabelSet& set) {
  return std::any_of(set.texts.begin(), set.texts.end(),
                     [](const RichText& text) { return text.text.contains(u'E'); });
}

/// With a power of ten taken out; without a common part when that makes nothing shorter.
LabelSet CompactSet(const AxisState& axis, const std::vector<Tick>& ticks) {
  const CompactLabelSet compact = CompactLabels(axis, ticks);
  LabelSet set;
  for (const std::string& label : compact.labels) set.texts.push_back(LabelText(axis, label));
  if (compact.exponent == 0) return set;
  set.common = {QStringLiteral("\u00d710"), WithMinusSigns(QString::number(compact.exponent))};
  return set;
}

LabelSet PowerSet(const std::vector<Tick>& ticks) {
  LabelSet set;
  for (const PowerLabel& label : PowerLabels(ticks)) {
    set.texts.push_back({QString::fromStdString(label.base),
                         WithMinusSigns(QString::fromStdString(label.exponent))});
  }
  return set;
}

qsizetype LongestOf(const LabelSet& set) {
  qsizetype longest = 0;
  for (const RichText& text : set.texts) longest = std::max(longest, text.text.size());
  return longest;
}

/// The calendar unit that the ticks are apart, whatever the axis' own may be; Automatic when they are none's.
DateTickType UnitOfTicks(const AxisState& axis, const std::vector<Tick>& ticks) {
  constexpr double kUneven = 0.1;  // a month of 28 days is a month
  if (!axis.ShowAsTime || ticks.size() < 2 || !IsCalendarDay(axis.Min) || !IsCalendarDay(axis.Max))
    return DateTickType::Automatic;
  const double step = ticks[1].value - ticks[0].value;
  for (int type = static_cast<int>(DateTickType::Century); type >= 0; --type) {
    const auto unit = static_cast<DateTickType>(type);
    if (std::abs(step - StepDays(unit)) <= kUneven * StepDays(unit)) return unit;
  }
  return DateTickType::Automatic;
}

}  // namespace

std::vector<LabelSet> LabelSets(const AxisState& axis, const std::vector<Tick>& ticks) {
  if (WantsPowerLabels(axis)) return {PowerSet(ticks)};
  std::vector<LabelSet> sets = {PlainSet(axis, ticks)};
  if (axis.LogScale && !axis.ShowAsTime) {
    sets.push_back(PowerSet(ticks));
    return sets;
  }
  const auto reads_badly = [](const LabelSet& set) {
    return LongestOf(set) > kLongLabel || HasPowers(set);
  };
  if (axis.ShowAsTime) {
    sets.front().common.text = QString::fromStdString(CommonDate(axis, ticks));
    return sets;
  }
  const OffsetLabels less = TakeOffset(axis, ticks);
  if (!less.offset.empty() && reads_badly(sets.front())) {
    LabelSet set = PlainSet(less.axis, less.ticks);
    if (reads_badly(set)) set = CompactSet(less.axis, less.ticks);
    set.common.text.prepend(LabelText(axis, less.offset).text +
                            (set.common.IsEmpty() ? QString() : QStringLiteral("  ")));
    sets.insert(sets.begin(), std::move(set));
    return sets;
  }
  LabelSet shorter = CompactSet(axis, ticks);
  if (shorter.common.IsEmpty()) return sets;
  sets.insert(reads_badly(sets.front()) ? sets.begin() : sets.end(), std::move(shorter));
  return sets;
}

std::span<const int> LabelStrides(const AxisState& axis, const std::vector<Tick>& ticks) {
  static constexpr std::array kDecimal = {1, 2, 5, 10, 20, 50, 100, 200};
  static constexpr std::array kMinutes = {1, 2, 5, 10, 30, 60, 120, 180, 360, 720, 1440};
  static constexpr std::array kFiveMinutes = {1, 2, 6, 12, 24, 36, 72, 144, 288};
  static constexpr std::array kHalfHours = {1, 2, 4, 6, 12, 24, 48, 96};
  static constexpr std::array kHours = {1, 2, 3, 6, 12, 24, 48, 120, 240};
  static constexpr std::array kMonths = {1, 2, 3, 6, 12, 24, 60, 120, 240};
  static constexpr std::array kTwoMonths = {1, 3, 6, 12, 30, 60, 120};
  static constexpr std::array kQuarters = {1, 2, 4, 8, 20, 40, 80};
  switch (UnitOfTicks(axis, ticks)) {
    case DateTickType::Minute:
      return kMinutes;
    case DateTickType::FiveMinutes:
      return kFiveMinutes;
    case DateTickType::HalfHour:
      return kHalfHours;
    case DateTickType::Hour:
      return kHours;
    case DateTickType::Month:
      return kMonths;
    case DateTickType::TwoMonths:
      return kTwoMonths;
    case DateTickType::Quarter:
      return kQuarters;
    default:
      return kDecimal;
  }
}

std::vector<std::size_t> KeptTicks(const AxisState& axis, const std::vector<Tick>& ticks,
                                   int stride) {
  std::vector<std::size_t> labelled;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    if (!ticks[i].label.empty()) labelled.push_back(i);
  }
  if (stride <= 1 || labelled.size() < 2) return labelled;
  const double step = ticks[labelled[1]].value - ticks[labelled[0]].value;
  const OffsetLabels less = TakeOffset(axis, ticks);
  const DateTickType unit = UnitOfTicks(axis, ticks);
  // Days and weeks are counted from the first: no date comes round in equal steps of them.
  const bool calendar =
      unit != DateTickType::Day && unit != DateTickType::Week && unit != DateTickType::Automatic;
  const bool decades = axis.LogScale && WantsPowerLabels(axis);
  std::vector<std::size_t> kept;
  for (std::size_t i = 0; i < labelled.size(); ++i) {
    const double value = ticks[labelled[i]].value;
    double count = static_cast<double>(i);
    if (decades) {
      count = SplitDecimal(value).exponent;
    } else if (calendar) {
      count = static_cast<double>(UnitIndex(value, unit));
    } else if (!axis.LogScale && !axis.ShowAsTime) {
      count = std::round(less.ticks[labelled[i]].value / step);
    }
    if (std::fmod(count, stride) == 0) kept.push_back(labelled[i]);
  }
  return kept;
}

int MinorParts(double step, int most) {
  if (!(step > 0) || !std::isfinite(step)) return 1;
  const long mantissa = std::lround(SplitDecimal(step).mantissa * 10);
  const bool by_twos = mantissa == 20 || mantissa == 40;
  const bool by_fives = mantissa == 10 || mantissa == 50;
  if (by_twos && most >= 4) return 4;
  if (by_fives && most >= 5) return 5;
  return (by_twos || by_fives) && most >= 2 && mantissa != 50 ? 2 : 1;
}

}  // namespace tarnwick
