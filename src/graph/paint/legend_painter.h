// Draws the legend as laid out. Knows styles of DataSets, no points.
#pragma once

#include "graph/paint/paint_plot.h"

namespace tarnwick {

struct LegendBox;

/// `whole` is the appearance that decides on line styles for print: that of the graph, or of the one it is inserted into.
void PaintLegend(QPainter& painter, const TxyGraph& graph, const LegendBox& box, PaintTarget target,
                 const Appearance& whole);

}  // namespace tarnwick
