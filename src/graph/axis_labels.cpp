#include "graph/axis_labels.h"

#include <algorithm>
#include <cmath>

#include "graph/nice_step.h"
#include "graph/tick_label.h"

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

}  // namespace

std::vector<LabelSet> LabelSets(const AxisState& axis, const std::vector<Tick>& ticks) {
  if (WantsPowerLabels(axis)) return {PowerSet(ticks)};
  std::vector<LabelSet> sets = {PlainSet(axis, ticks)};
  if (axis.LogScale && !axis.ShowAsTime) {
    sets.push_back(PowerSet(ticks));
    return sets;
  }
  const CompactLabelSet compact = CompactLabels(axis, ticks);
  if (compact.exponent == 0) return sets;
  LabelSet shorter;
  shorter.exponent = compact.exponent;
  for (const std::string& label : compact.labels) shorter.texts.push_back(LabelText(axis, label));
  const bool preferred = LongestOf(sets.front()) > kLongLabel;
  sets.insert(preferred ? sets.begin() : sets.end(), std::move(shorter));
  return sets;
}

std::vector<std::size_t> KeptTicks(const AxisState& axis, const std::vector<Tick>& ticks,
                                   int stride) {
  std::vector<std::size_t> labelled;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    if (!ticks[i].label.empty()) labelled.push_back(i);
  }
  if (stride <= 1 || labelled.size() < 2) return labelled;
  const double step = ticks[labelled[1]].value - ticks[labelled[0]].value;
  const bool decades = axis.LogScale && WantsPowerLabels(axis);
  std::vector<std::size_t> kept;
  for (std::size_t i = 0; i < labelled.size(); ++i) {
    const double value = ticks[labelled[i]].value;
    double count = static_cast<double>(i);
    if (decades) {
      count = SplitDecimal(value).exponent;
    } else if (!axis.LogScale && !axis.ShowAsTime) {
      count = std::round(value / step);
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
