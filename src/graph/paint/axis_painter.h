// Draws grid, axis lines, ticks, labels, titles and the cross at zero as laid out. Knows no data.
#pragma once

#include "graph/paint/paint_plot.h"

namespace tarnwick {

struct Appearance;

/// Grid lines of all axes, those that would lie on an axis line left out.
void PaintGrid(QPainter& painter, const Appearance& appearance, const PlotLayout& layout,
               PaintTarget target);

/// Axis lines, ticks, labels, titles, then the cross at zero.
void PaintAxes(QPainter& painter, const Appearance& appearance, const PlotLayout& layout,
               PaintTarget target);

}  // namespace tarnwick
