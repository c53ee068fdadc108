// What of a graph's DataSets is shown, and against which axis. Knows the graph, no layout and no painter.
#pragma once

#include <string>

#include "data/series/extremes.h"
#include "graph/axes/axis_scale.h"
#include "graph/axes/axis_state.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// What a picture calls the DataSet: its name, and where that is its column's, what was computed from the column.
std::string ShownName(const TSeries& series);

/// The axis that a DataSet's Y values are drawn against, or would be were it not in the panel.
AxisId YAxisOf(const TSeries& series);

/// True when the DataSet is drawn in the panel under the plot, which scales itself.
bool IsInPanel(const TSeries& series);

/// True while some drawn DataSet with points is in the panel, which then takes the lower quarter of the room between the margins.
bool HasPanel(const TxyGraph& graph);

/// The map of the DataSet's Y values at the graph's client size.
AxisScale YScaleOf(const TxyGraph& graph, const TSeries& series);

/// The extremes of a DataSet with points, widened by the bars of its errors.
Extremes ShownExtremes(const TxyGraph& graph, const TSeries& series);

/// True when at least one DataSet with points is drawn against the axis; every DataSet counts for the X axis.
bool AxisInUse(const TxyGraph& graph, AxisId axis);

/// True where the axis is to be shown, and, of the first Y axis, not left empty while the second one, which is shown, has what is
/// drawn: a scale of nothing would be taken for that of the curve.
bool IsAxisShown(const TxyGraph& graph, AxisId axis);
/// Whether grid lines stand at its ticks: its own, and at those of the second Y axis the ones of a first that is left empty.
bool HasGrid(const TxyGraph& graph, AxisId axis);

/// The DataSet that gives the X axis its title; nullptr when none.
const TSeries* XSource(const TxyGraph& graph);

/// True when the DataSet is to be drawn: visible, and not an X source that the view plots against.
bool IsDrawn(const TxyGraph& graph, const TSeries& series);

/// True once some DataSet holds points.
bool HasPoints(const TxyGraph& graph);

/// Why the curve of some DataSet's model cannot be drawn; empty when all can.
std::string FitError(const TxyGraph& graph);

}  // namespace tarnwick
