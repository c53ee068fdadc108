// What of a graph's data came by itself since a step was made, so that undoing the step leaves it there. Knows states and ids.
#pragma once

#include "graph/graph_state_compare.h"

namespace tarnwick {

/// Gives `target`, one of the two states of `edit`, the points of `present` that were made after both of them, by no step: those
/// with higher ids, and the places where their line breaks. DataSets are told by their places, where steps added or deleted some
/// by name and source.
void KeepPointsComeSince(GraphState& target, const GraphState& present, const StateChange& edit);

}  // namespace tarnwick
