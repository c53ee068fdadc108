// Which DataSets of a freshly read graph belong to the second Y axis. Knows names with units and ranges of Y; draws nothing.
#pragma once

#include <string>

namespace tarnwick {

class TSeries;
class TxyGraph;

/// True for runs of one column of one source.
bool AreOfOneColumn(const TSeries& one, const TSeries& other);

/// Draws some DataSets against the second Y axis where on one axis others, or they, would look flat: those of the second of
/// two quantities, told apart by the units at the end of the DataSets' names ("Pressure (bar)", "Pressure [bar]", "Pressure
/// / bar"), else those of another size than the first, when ranges are apart by more than 1:50. Runs of one column stay
/// together. Changes nothing when some DataSet is already drawn against the second axis.
void SeparateQuantities(TxyGraph& graph);

/// Which DataSets are seen as flat lines all the same, as two axes do not show three sizes: a clause, empty for none.
std::string FlatLinesText(const TxyGraph& graph);

}  // namespace tarnwick
