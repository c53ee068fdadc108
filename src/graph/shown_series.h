// What of a graph's DataSets is shown, and against which axis. Knows the graph, no layout and no painter.
#pragma once

#include <string>

#include "graph/axes/axis_state.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// The axis that a DataSet's Y values are drawn against.
AxisId YAxisOf(const TSeries& series);

/// True when at least one DataSet with points is drawn against the axis; every DataSet counts for the X axis.
bool AxisInUse(const TxyGraph& graph, AxisId axis);

/// The DataSet that gives the X axis its title; nullptr when none.
const TSeries* XSource(const TxyGraph& graph);

/// True when the DataSet is to be drawn: visible, and not an X source that the view plots against.
bool IsDrawn(const TxyGraph& graph, const TSeries& series);

/// True once some DataSet holds points.
bool HasPoints(const TxyGraph& graph);

/// Why the curve of some DataSet's model cannot be drawn; empty when all can.
std::string FitError(const TxyGraph& graph);

}  // namespace tarnwick
