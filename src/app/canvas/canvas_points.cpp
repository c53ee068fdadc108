#include "app/canvas/canvas_points.h"

#include <QKeyEvent>

#include "app/canvas/graph_canvas.h"
#include "base/error.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

AxisScale YScale(const GraphCanvas& canvas) {
  const TxyGraph& graph = canvas.GetDocument().Graph();
  const TSeries* series = graph.CurrentSeries();
  return graph.Axis(series ? YAxisOf(*series) : AxisId::Y).Scale();
}

AxisScale XScale(const GraphCanvas& canvas) {
  return canvas.GetDocument().Graph().Axis(AxisId::X).Scale();
}

}  // namespace

bool IsInPlot(const GraphCanvas& canvas, QPointF place) {
  return canvas.Layout().plot.contains(place);
}

std::optional<PickedPoint> PointUnder(const GraphCanvas& canvas, QPointF place) {
  if (!IsInPlot(canvas, place)) return std::nullopt;
  return PickPoint(canvas.GetDocument().Graph(), XScale(canvas).ValueAt(place.x()));
}

void CheckEditable(const PickedPoint& point) {
  if (point.on_curve) throw Error("Show the points of the DataSet to edit them");
}

PlotPoint ValueAt(const GraphCanvas& canvas, QPointF place) {
  return {XScale(canvas).ValueAt(place.x()), YScale(canvas).ValueAt(place.y())};
}

QPointF PlaceOf(const GraphCanvas& canvas, const PlotPoint& value) {
  return {XScale(canvas).Position(value.x), YScale(canvas).Position(value.y)};
}

QPoint ArrowWay(const QKeyEvent& event) {
  const int step = event.modifiers() & Qt::ShiftModifier ? 10 : 1;
  switch (event.key()) {
    case Qt::Key_Left:
      return {-step, 0};
    case Qt::Key_Right:
      return {step, 0};
    case Qt::Key_Up:
      return {0, -step};
    case Qt::Key_Down:
      return {0, step};
    default:
      return {};
  }
}

bool IsReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace tarnwick
