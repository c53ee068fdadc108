// Draws marks and their captions as laid out. Knows no graph.
#pragma once

#include "graph/paint/paint_plot.h"

namespace tarnwick {

/// In ID order: lines, arrows and rectangles clipped to the plot, points as a ring with a cross of the stored width, captions in
/// the mark's colour.
void PaintMarks(QPainter& painter, const PlotLayout& layout, PaintTarget target);

}  // namespace tarnwick
