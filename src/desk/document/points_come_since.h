// What of a graph's data came by itself since a step was made, so that undoing the step leaves it there. Knows states and ids.
#pragma once

#include "graph/graph_state.h"

namespace tarnwick {

/// Gives `target`, one of the two states of a step, the points of `present` that came since `left`, the other one: those with
/// higher ids, the places where their line breaks, and its order. Where no point of `left` is there any more (only the last are
/// kept, the source began anew) the points are those of `present`; where the step is that a source began anew, those of `target`.
/// DataSets are told by their places, where the step added or deleted some by name and source.
void KeepPointsComeSince(GraphState& target, const GraphState& present, const GraphState& left);

/// Gives `state`, one side of a step, the points that its DataSets had when that side was left or arrived at, as `present` has
/// them: going there again brings back what came meanwhile. False when nothing came.
bool TakePointsThatCame(GraphState& state, const GraphState& present);

}  // namespace tarnwick
