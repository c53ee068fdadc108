// Shows which mark is the current one. Knows the layout, no document.
#pragma once

#include "graph/layout/plot_layout.h"

class QPainter;

namespace tarnwick {

/// Handles on that mark, as a selected inserted graph has them; nothing where it is not seen.
void PaintCurrentMark(QPainter& painter, const PlotLayout& layout, std::int32_t current);

}  // namespace tarnwick
