// Draws the legend as laid out. Knows styles of DataSets, no points.
#pragma once

#include "graph/paint_plot.h"

namespace tarnwick {

struct LegendBox;

void PaintLegend(QPainter& painter, const TxyGraph& graph, const LegendBox& box,
                 PaintTarget target);

}  // namespace tarnwick
