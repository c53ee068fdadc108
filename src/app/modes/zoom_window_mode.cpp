#include "app/modes/zoom_window_mode.h"

#include <QMouseEvent>
#include <cmath>

#include "app/canvas/axis_zoom.h"
#include "app/canvas/canvas_cursor.h"
#include "app/canvas/graph_canvas.h"
#include "app/canvas/overlay.h"

namespace tarnwick {
namespace {

constexpr double kLeastDrag = 6;

void ZoomTo(TAxis& axis, double first, double second) {
  const auto range = SpannedRange(axis.Scale(), first, second);
  if (!range) return;
  axis.SetMin(range->min);
  axis.SetMax(range->max);
}

}  // namespace

std::optional<QRectF> ZoomWindowMode::Area(const QRectF& plot) const {
  if (!start_) return std::nullopt;
  QRectF area = QRectF(*start_, end_).normalized();
  const bool wide = area.width() >= kLeastDrag;
  const bool high = area.height() >= kLeastDrag;
  if (!wide && !high) return std::nullopt;
  if (!wide) area.setLeft(plot.left()), area.setRight(plot.right());
  if (!high) area.setTop(plot.top()), area.setBottom(plot.bottom());
  area = area.intersected(plot);
  return area.isEmpty() ? std::nullopt : std::optional(area);
}

void ZoomWindowMode::MousePress(GraphCanvas&, QMouseEvent& event) {
  if (event.button() == Qt::LeftButton) start_ = end_ = event.position();
}

void ZoomWindowMode::MouseMove(GraphCanvas&, QMouseEvent& event) {
  end_ = event.position();
}

void ZoomWindowMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !start_) return;
  end_ = event.position();
  if (const auto area = Area(canvas.Layout().plot)) {
    Document& document = canvas.GetDocument();
    TxyGraph& graph = document.Graph();
    document.Zoom().Remember(graph);
    graph.BeginUpdate();
    ZoomTo(graph.Axis(AxisId::X), area->left(), area->right());
    ZoomTo(graph.Axis(AxisId::Y), area->top(), area->bottom());
    ZoomTo(graph.Axis(AxisId::Y2), area->top(), area->bottom());
    graph.EndUpdate();
  }
  canvas.EndMode();
}

void ZoomWindowMode::PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const {
  const QRectF& plot = canvas.Layout().plot;
  const auto area = Area(plot);
  if (!area) return;
  QPainterPath shade;
  shade.addRect(plot);
  shade.addRect(*area);
  painter.fillPath(shade, QColor(30, 40, 60, 40));
  QPainterPath frame;
  frame.addRect(*area);
  DrawOverlay(painter, frame, kOverlayBlue, OverlayLine::Dashed);
}

QCursor ZoomWindowMode::Cursor() const {
  return DrawnCursor(CanvasCursor::Zoom);
}

}  // namespace tarnwick
