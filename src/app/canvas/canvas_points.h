// What the keys and the modes that edit points share: the point and the place under the mouse.
#pragma once

#include <QPoint>
#include <QPointF>
#include <optional>

#include "graph/edit/point_edit.h"
#include "graph/picking.h"

class QKeyEvent;

namespace tarnwick {

class GraphCanvas;

/// The point of the current DataSet that picking finds from a place of the plot; nothing outside the plot.
std::optional<PickedPoint> PointUnder(const GraphCanvas& canvas, QPointF place);
/// Throws Error when the point is one of a regression curve, which has no points to edit.
void CheckEditable(const PickedPoint& point);
/// Between data units, by the current DataSet's axes, and the canvas' pixels.
PlotPoint ValueAt(const GraphCanvas& canvas, QPointF place);
QPointF PlaceOf(const GraphCanvas& canvas, const PlotPoint& value);
bool IsInPlot(const GraphCanvas& canvas, QPointF place);
/// The way that an arrow key stands for: a pixel, ten with SHIFT; null for any other key.
QPoint ArrowWay(const QKeyEvent& event);
/// The key that does what a click would do.
bool IsReturn(const QKeyEvent& event);

}  // namespace tarnwick
