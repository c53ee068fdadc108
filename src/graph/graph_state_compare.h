// When two states of a graph are the same one, and which parts of a state are the view of it. Goes by the field tables;
// knows no graph object.
#pragma once

#include "graph/graph_state.h"

namespace tarnwick {

/// Equal fields, equal drawing attributes and shared points, child graphs included. Which mark is current and what axes
/// compute from the data do not count. Undefined values equal each other.
bool SameState(const SeriesState& left, const SeriesState& right);
bool SameState(const GraphState& left, const GraphState& right);

/// True when both graphs are drawn alike apart from their data and scales: appearance, margins, legend, and as long as
/// both have equally many DataSets how these are drawn.
bool SameLook(const GraphState& left, const GraphState& right);

/// True when both axes are scaled by the same settings: the switches, and of range and step what is not automatic.
bool SameScaleSettings(const AxisState& left, const AxisState& right);

/// The edit that led from one state to another.
struct StateChange {
  const GraphState& before;
  const GraphState& after;
};

/// Gives `target`, one of the two states of `edit`, the view that `present` has: of every axis whose scale the edit left
/// alone range and step, and the place of the graph's own window. Child graphs keep theirs as long as there are equally
/// many in all states.
void KeepView(GraphState& target, const GraphState& present, const StateChange& edit);

}  // namespace tarnwick
