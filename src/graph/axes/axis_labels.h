// The texts that an axis may show at its ticks, longest form first, and which of them to keep when all do not fit. Knows
// ticks and texts, no pixels.
#pragma once

#include <span>
#include <vector>

#include "graph/axes/axis_state.h"
#include "graph/axes/plot_metrics.h"
#include "graph/axes/tick.h"

namespace tarnwick {

struct LabelSet {
  std::vector<RichText> texts;  ///< one per tick, empty where the tick has no label
  RichText common;  ///< what all of them leave out: "×10" and an exponent, "+1000000000", "2024"
};

/// The forms worth trying, the preferred one first; at least one.
std::vector<LabelSet> LabelSets(const AxisState& axis, const std::vector<Tick>& ticks);

/// The strides worth trying, ascending from 1: such as lead to full hours, days and years on a time axis.
std::span<const int> LabelStrides(const AxisState& axis, const std::vector<Tick>& ticks);

/// The labelled ticks that stay when every `stride`th does: round numbers (zero among them) on a linear axis, less what all of
/// them have in common, round exponents on a logarithmic one, full units on a time axis.
std::vector<std::size_t> KeptTicks(const AxisState& axis, const std::vector<Tick>& ticks,
                                   int stride);

/// Parts into which minor ticks divide a linear axis' step of `step`; at most `most`, 1 for none.
int MinorParts(double step, int most);

}  // namespace tarnwick
