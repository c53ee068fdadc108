#include "app/modes/delete_point_mode.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "base/prompt.h"
#include "graph/edit/point_edit.h"

namespace tarnwick {
namespace {

void AskAndDelete(GraphCanvas& canvas, const std::optional<PickedPoint>& point) {
  if (!point) return;
  CheckEditable(*point);
  canvas.Pick(point);  // seen while it is asked about
  Document& document = canvas.GetDocument();
  const std::int32_t id = point->number;
  const Question question{
      DeletePointQuestion(document.Graph(), *document.Graph().CurrentSeries(), id),
      {Answer::Yes, Answer::No}};
  if (canvas.GetPrompt().Ask(question) != Answer::Yes) return;
  document.Edit("Delete Point", [id](TxyGraph& graph) { graph.CurrentSeries()->DeletePoint(id); });
}

}  // namespace

void DeletePointMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  AskAndDelete(canvas, PointUnder(canvas, event.position()));
}

bool DeletePointMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (!IsReturn(event)) return CanvasMode::KeyPress(canvas, event);
  AskAndDelete(canvas, canvas.Picked());
  return true;
}

QCursor DeletePointMode::Cursor() const {
  return DrawnCursor(CanvasCursor::PointDel);
}

}  // namespace tarnwick
