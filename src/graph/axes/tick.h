// Where an axis has its ticks, and their labels: numeric, logarithmic and calendar. Never more than a few hundred ticks,
// whatever the range and step. Knows no pixels and no fonts; thinning labels that collide is the layout's work.
#pragma once

#include <string>
#include <vector>

#include "graph/axes/axis_state.h"
#include "graph/axes/nice_step.h"

namespace tarnwick {

/// One tick: where, and its label ("" for an unlabelled tick).
struct Tick {
  double value = 0;
  std::string label;
  bool major = true;
  bool operator==(const Tick&) const = default;
};

/// Most ticks that a step or calendar unit may give; a finer one is replaced by a nice step or a coarser unit.
inline constexpr int kMostTicks = 200;

/// The ticks of the axis' visible range in rising order: multiples of StepSize; the divisions of each decade on a
/// logarithmic axis (decades major, minor ticks between them where divisions are not labelled); calendar units, on their
/// first day or minute, on a time axis. One of the unit "automatic", whose own step is a decimal fraction of days that no
/// clock shows, has at least MinSteps full seconds, minutes, hours, days, months or years. Empty when the range is empty or
/// not finite.
std::vector<Tick> MakeTicks(const AxisState& axis, const StepLimits& limits);

}  // namespace tarnwick
