// Draws one DataSet: bound lines, regression line, connecting lines, symbols. Knows painter, style and points; neither axes,
// layout nor graph.
#pragma once

#include <QRectF>

#include "graph/appearance.h"
#include "graph/axes/axis_scale.h"

class QPainter;

namespace tarnwick {

class TSeries;
struct SeriesStyle;

/// Where a DataSet is drawn, in the painter's logical pixels.
struct SeriesFrame {
  AxisScale x;
  AxisScale y;  ///< of the axis the DataSet is drawn against, Y or Y2
  QRectF plot;  ///< the plot rectangle: bound lines span it
  QRectF
      clip;  ///< nothing is drawn outside: the plot rectangle, or more when points outside it are shown
  LineStyle solid_line = LineStyle::Solid;  ///< what connecting lines of solid style are drawn in
};

/// Draws the DataSet, when it is visible, with the painter's transformation (translation and scaling; line widths and symbols
/// scale along). Lines and symbols are thinned to what the device shows; lines are anti-aliased. The regression must have been
/// updated before. The painter's state is restored.
void PaintSeries(QPainter& painter, const TSeries& series, const SeriesFrame& frame);

/// Draws the curve of the DataSet's model in the same way; nothing when it is not shown.
void PaintModelCurve(QPainter& painter, const TSeries& series, const SeriesFrame& frame);

/// The sample of that curve for the legend.
void PaintModelCurveSample(QPainter& painter, const QRectF& rect, const TSeries& series);

/// The DataSet's sample of line and symbol for the legend, centred in `rect`.
void PaintSeriesSample(QPainter& painter, const QRectF& rect, const SeriesStyle& style);

}  // namespace tarnwick
