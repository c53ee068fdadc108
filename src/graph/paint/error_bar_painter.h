// Draws the bars that show the errors of a DataSet's points. Knows painter, style and bars; no axes and no graph.
#pragma once

#include <QRectF>

#include "graph/paint/device_space.h"

class QPainter;

namespace tarnwick {

class TSeries;
struct SeriesStyle;

/// The DataSet's bars with their caps, one logical pixel wide, in the colour of its symbols (of its line where it has none).
void PaintErrorBars(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame);

/// The bars of the legend's sample, around the middle of `rect`.
void PaintErrorBarSample(QPainter& painter, const QRectF& rect, const TSeries& series);

}  // namespace tarnwick
