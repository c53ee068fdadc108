#include "app/modes/child_frame_mode.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "app/canvas/graph_canvas.h"
#include "desk/document/open_edit.h"
#include "graph/edit/child_edit.h"

namespace tarnwick {
namespace {

/// What of the selected inserted graph is there.
ChildGrip SelectedGripAt(const GraphCanvas& canvas, const QMouseEvent& event) {
  const ChildFrame* frame = canvas.FrameOf(canvas.GetDocument().SelectedChild());
  return frame ? GripAt(frame->frame, event.position() + canvas.Origin()) : ChildGrip::None;
}

}  // namespace

std::unique_ptr<CanvasMode> ChildFrameMode::At(const GraphCanvas& canvas,
                                               const QMouseEvent& press) {
  const ChildGrip grip = SelectedGripAt(canvas, press);
  if (grip == ChildGrip::None) return nullptr;
  return std::make_unique<ChildFrameMode>(canvas, *canvas.GetDocument().SelectedChild(), grip,
                                          press.globalPosition());
}

std::optional<QCursor> ChildFrameMode::CursorAt(const GraphCanvas& canvas,
                                                const QMouseEvent& move) {
  const ChildGrip grip = SelectedGripAt(canvas, move);
  if (grip == ChildGrip::None || grip == ChildGrip::Body) return std::nullopt;
  return CursorOf(grip);
}

ChildFrameMode::ChildFrameMode(const GraphCanvas& canvas, std::size_t child, ChildGrip grip,
                               QPointF start)
    : child_(child), grip_(grip), start_(start) {
  const TxyGraph& whole = canvas.GetDocument().WholeGraph();
  place_ = whole.Children()[child]->PlaceIn(whole.ClientWidth(), whole.ClientHeight());
}

ChildFrameMode::~ChildFrameMode() = default;

void ChildFrameMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  // On the screen, because the graph's own pixels go along with it.
  const QPoint way = (event.globalPosition() - start_).toPoint();
  if (!edit_ && way.manhattanLength() < QApplication::startDragDistance()) return;
  Document& document = canvas.GetDocument();
  if (!edit_) {
    const char* name = grip_ == ChildGrip::Body ? "Move Inserted Graph" : "Size Inserted Graph";
    edit_ = std::make_unique<OpenEdit>(document, name);
  }
  SetChildPlace(document.WholeGraph(), child_, Dragged(place_, grip_, way.x(), way.y()));
}

void ChildFrameMode::MouseRelease(GraphCanvas& canvas, QMouseEvent&) {
  if (edit_) edit_->Finish();
  edit_.reset();
  canvas.EndMode();
}

bool ChildFrameMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) edit_.reset();
  return CanvasMode::KeyPress(canvas, event);
}

}  // namespace tarnwick
