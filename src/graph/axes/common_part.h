// What all tick labels of an axis have in common and need not repeat: a large offset, the date of times of day. Knows values
// and settings of an axis, no fonts and no pixels.
#pragma once

#include <string>
#include <vector>

#include "graph/axes/axis_state.h"
#include "graph/axes/tick.h"

namespace tarnwick {

/// Labels of a linear axis less an offset that makes most of every one of them.
struct OffsetLabels {
  std::string offset;       ///< "+1000000000", "-2500000.1"; "" when nothing is taken out
  AxisState axis;           ///< the axis less the offset
  std::vector<Tick> ticks;  ///< less the offset, with labels of their own
};

/// Takes out the roundest number near the ticks where they are ten thousand times farther from zero than from each other. Time
/// axes, logarithmic axes and formats other than General, Fixed and Thousands keep their labels.
OffsetLabels TakeOffset(const AxisState& axis, const std::vector<Tick>& ticks);

/// The year that labels of days leave out, "2024" or "2023–2024", or the date that labels of hours leave out, "2024-03-14";
/// "" when the labels tell it themselves, and for times that are no time of a date but have passed.
std::string CommonDate(const AxisState& axis, const std::vector<Tick>& ticks);

}  // namespace tarnwick
