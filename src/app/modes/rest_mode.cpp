#include "app/modes/rest_mode.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <memory>
#include <utility>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "app/canvas/overlay.h"
#include "app/canvas/part_at.h"
#include "app/modes/child_frame_mode.h"
#include "app/modes/move_object_mode.h"
#include "app/modes/pan_mode.h"
#include "app/modes/trace_mode.h"
#include "app/modes/zoom_window_mode.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {

RestMode::Held RestMode::HeldBy(int key) {
  switch (key) {
    case Qt::Key_Shift:
      return Held::Shift;
    case Qt::Key_Control:
      return Held::Ctrl;
    case Qt::Key_Alt:
      return Held::Alt;
    case Qt::Key_Space:
      return Held::Space;
    default:
      return Held::Nothing;
  }
}

void RestMode::SetHeld(GraphCanvas& canvas, Held held) {
  held_ = held;
  movable_ = held == Held::Ctrl ? ObjectAt(canvas.Layout(), place_) : std::nullopt;
  canvas.setCursor(Cursor());
  canvas.update();
}

void RestMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() == Qt::MiddleButton) {
    canvas.SetMode(std::make_unique<PanMode>(canvas.GetDocument(), event.position()));
  } else if (event.button() == Qt::LeftButton) {
    PressLeft(canvas, event);
  }
}

void RestMode::PressLeft(GraphCanvas& canvas, QMouseEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  if (held_ == Held::Space) {
    canvas.SetMode(std::make_unique<PanMode>(canvas.GetDocument(), event.position()));
  } else if (modifiers & Qt::ShiftModifier) {
    canvas.BeginMode(std::make_unique<ZoomWindowMode>(), event);
  } else if (modifiers & Qt::AltModifier) {
    canvas.BeginMode(std::make_unique<TraceMode>(TraceMode::Lasts::OneTrace), event);
  } else if (ChildFrameMode::CursorAt(canvas, event)) {
    canvas.SetMode(ChildFrameMode::At(canvas, event));
  } else {
    PressOnPicture(canvas, event);
  }
}

void RestMode::PressOnPicture(GraphCanvas& canvas, const QMouseEvent& event) {
  const QPointF place = event.position();
  const bool moves = event.modifiers() & Qt::ControlModifier;
  const std::optional<PictureObject> object = ObjectAt(canvas.Layout(), place);
  Document& document = canvas.GetDocument();
  if (!moves) document.TakeClick(PartAt(document.Graph(), canvas.Layout(), place));
  if (object && moves) {
    canvas.SetMode(std::make_unique<MoveObjectMode>(canvas, *object, place));
  } else if (object && object->IsOfMark()) {
    SetCurrentMark(document.Graph(), object->id);
  } else if (IsInPlot(canvas, place) && !moves) {
    if (!object) canvas.Pick(PointUnder(canvas, place));
  } else if (auto frame_mode = ChildFrameMode::At(canvas, event)) {
    canvas.SetMode(std::move(frame_mode));
  }
}

void RestMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  place_ = event.position();
  // Keys may have been pressed or let go while another window had them.
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  Held held = held_ == Held::Space ? Held::Space : Held::Nothing;
  if (modifiers & Qt::ShiftModifier) held = Held::Shift;
  if (modifiers & Qt::AltModifier) held = Held::Alt;
  if (modifiers & Qt::ControlModifier) held = Held::Ctrl;
  if (held != held_ || held == Held::Ctrl) SetHeld(canvas, held);
  const auto handle = ChildFrameMode::CursorAt(canvas, event);
  if (handle.has_value() != on_handle_) canvas.setCursor(handle.value_or(Cursor()));
  on_handle_ = handle.has_value();
}

bool RestMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.key() == Qt::Key_Backspace) {
    canvas.GetDocument().Zoom().GoBack(canvas.GetDocument().Graph());
    return true;
  }
  if (TakesKey(canvas, event.key())) {
    canvas.Traces().Clear();
    canvas.Pick(std::nullopt);
    return true;
  }
  const Held held = HeldBy(event.key());
  if (held == Held::Nothing) return false;
  if (!event.isAutoRepeat()) SetHeld(canvas, held);
  return true;
}

bool RestMode::KeyRelease(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.isAutoRepeat() || HeldBy(event.key()) == Held::Nothing) return false;
  SetHeld(canvas, Held::Nothing);
  return true;
}

void RestMode::FocusLost(GraphCanvas& canvas) {
  // Whoever has the keys now also gets the release of one held.
  SetHeld(canvas, Held::Nothing);
}

bool RestMode::TakesKey(const GraphCanvas& canvas, int key) const {
  return key == Qt::Key_Escape && (canvas.Picked() || !canvas.Traces().IsEmpty());
}

void RestMode::PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const {
  if (!movable_) return;
  DrawOverlay(painter, OutlineOf(canvas.Layout(), *movable_), kOverlayBlue, OverlayLine::Dashed);
}

QCursor RestMode::Cursor() const {
  switch (held_) {
    case Held::Shift:
      return DrawnCursor(CanvasCursor::Zoom);
    case Held::Alt:
      return DrawnCursor(CanvasCursor::Pen);
    case Held::Ctrl:
      return movable_ ? DrawnCursor(CanvasCursor::MarkBox) : QCursor(Qt::CrossCursor);
    case Held::Space:
      return Qt::OpenHandCursor;
    case Held::Nothing:
      break;
  }
  return Qt::CrossCursor;
}

}  // namespace tarnwick
