// Which DataSets of a freshly read graph belong to the second Y axis. Knows names with units and ranges of Y; draws nothing.
#pragma once

namespace tarnwick {

class TxyGraph;

/// Draws the DataSets of the second of two quantities against the second Y axis, when on one axis either would look flat.
/// Quantities are told apart by the units at the end of the DataSets' names: "Pressure (bar)", "Pressure [bar]",
/// "Pressure / bar". Changes nothing when there are not exactly two units, a name has none, or some DataSet is already drawn
/// against the second axis.
void SeparateQuantities(TxyGraph& graph);

}  // namespace tarnwick
