#include "app/modes/insert_point_mode.h"

#include <QMouseEvent>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"

namespace tarnwick {

void InsertPointMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  Document& document = canvas.GetDocument();
  const bool placed = event.button() == Qt::LeftButton && IsInPlot(canvas, event.position());
  if (!placed || !document.Graph().CurrentSeries()) return;
  const PlotPoint value = ValueAt(canvas, event.position());
  document.Edit("Insert Point",
                [&](TxyGraph& graph) { InsertPoint(*graph.CurrentSeries(), value); });
  canvas.ShowReadOutAt(event.position());  // the new point is the nearest now
}

QCursor InsertPointMode::Cursor() const {
  return DrawnCursor(CanvasCursor::DownArrow);
}

}  // namespace tarnwick
