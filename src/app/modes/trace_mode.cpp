#include "app/modes/trace_mode.h"

#include <QLineF>
#include <QMouseEvent>
#include <algorithm>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr double kLeastStep = 2;

}  // namespace

void TraceMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !IsInPlot(canvas, event.position())) return;
  const TxyGraph& graph = canvas.GetDocument().Graph();
  const TSeries* series = graph.CurrentSeries();
  canvas.Traces().Begin(canvas.GetDocument().SelectedChild(),
                        series ? YAxisOf(*series) : AxisId::Y);
  Add(canvas, event.position());
}

void TraceMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  if (last_ && QLineF(*last_, event.position()).length() >= kLeastStep) {
    Add(canvas, event.position());
  }
}

void TraceMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  last_.reset();
  if (lasts_ == Lasts::OneTrace) canvas.EndMode();
}

void TraceMode::Add(GraphCanvas& canvas, QPointF place) {
  const QRectF& plot = canvas.Layout().plot;
  last_ = QPointF(std::clamp(place.x(), plot.left(), plot.right()),
                  std::clamp(place.y(), plot.top(), plot.bottom()));
  const PlotPoint value = ValueAt(canvas, *last_);
  canvas.Traces().Add({value.x, value.y});
  canvas.update();
}

QCursor TraceMode::Cursor() const {
  return DrawnCursor(CanvasCursor::Pen);
}

}  // namespace tarnwick
