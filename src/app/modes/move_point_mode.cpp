#include "app/modes/move_point_mode.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "app/canvas/overlay.h"
#include "base/prompt.h"

namespace tarnwick {
namespace {

constexpr double kLeastDrag = 3;

/// Lets go of the point at its end: its way is seen as long as it is asked about.
struct LettingGo {
  GraphCanvas& canvas;
  std::optional<PickedPoint>& held;
  ~LettingGo() {
    held.reset();
    canvas.update();
  }
};

}  // namespace

void MovePointMode::Hold(const std::optional<PickedPoint>& point, QPointF from) {
  if (!point) return;
  CheckEditable(*point);
  held_ = point;
  from_ = to_ = from;
}

void MovePointMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  Hold(PointUnder(canvas, event.position()), event.position());
}

void MovePointMode::MouseMove(GraphCanvas&, QMouseEvent& event) {
  if (held_ && event.buttons() & Qt::LeftButton) to_ = event.position();
}

void MovePointMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !held_) return;
  to_ = event.position();
  LetGo(canvas);
}

void MovePointMode::LetGo(GraphCanvas& canvas) {
  const PickedPoint point = *held_;
  const LettingGo at_the_end{canvas, held_};
  if (QLineF(from_, to_).length() < kLeastDrag) {
    canvas.Pick(point);
    return;
  }
  Document& document = canvas.GetDocument();
  const PlotPoint target = ValueAt(canvas, to_);
  const TSeries* series = document.Graph().CurrentSeries();
  if (!series) return;  // deleted while the point was held
  CheckMove(document.Graph(), *series, target);
  const Question question{MovePointQuestion(document.Graph(), *series, point.number, target),
                          {Answer::Yes, Answer::No}};
  if (question.text.empty()) return;  // as above
  if (canvas.GetPrompt().Ask(question) != Answer::Yes) return;
  document.Edit("Move Point", [&](TxyGraph& graph) {
    MovePoint(graph, *graph.CurrentSeries(), point.number, target);
  });
  canvas.Pick(PickedPoint{.number = point.number, .x = target.x, .y = target.y});
}

bool MovePointMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (IsReturn(event)) {
    if (held_) {
      LetGo(canvas);
    } else if (const auto& point = canvas.Picked()) {
      Hold(point, PlaceOf(canvas, {point->x, point->y}));
    }
    canvas.update();
    return true;
  }
  if (held_ && event.key() == Qt::Key_Escape) {
    held_.reset();
    canvas.update();
    return true;
  }
  const QPoint way = ArrowWay(event);
  if (!held_ || way.isNull()) return CanvasMode::KeyPress(canvas, event);
  to_ += way;
  canvas.ShowReadOutAt(to_);
  return true;
}

void MovePointMode::PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const {
  if (!held_) return;
  const QPointF origin = PlaceOf(canvas, {held_->x, held_->y});
  painter.save();
  painter.setClipRect(canvas.Layout().plot);
  DrawOverlayLine(painter, origin, to_, kOverlayBlue, OverlayLine::Dashed);
  DrawRing(painter, to_, kOverlayBlue);
  painter.restore();
}

QCursor MovePointMode::Cursor() const {
  return DrawnCursor(CanvasCursor::UpArrow);
}

}  // namespace tarnwick
