// What a user sets of an axis, by the axis' own rules. Knows the axis; asks nothing.
#pragma once

#include <string>

#include "graph/axes/axis_state.h"
#include "graph/axes/nice_step.h"

namespace tarnwick {

class TAxis;

/// Gives the axis what differs between its state and `wanted`. A value that the axis would work out anew switches that off: a
/// title or decimals given by hand stay, as bounds and step do by themselves.
void ChangeAxis(TAxis& axis, const AxisState& wanted);

/// Why an axis in this state could not be drawn as it says, in one sentence; empty when it can.
std::string AxisObjection(const AxisState& wanted, const StepLimits& limits);

}  // namespace tarnwick
