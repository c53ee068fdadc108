#include "app/rest_mode.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <memory>

#include "app/graph_canvas.h"
#include "app/pan_mode.h"

namespace tarnwick {

void RestMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  const bool pans =
      event.button() == Qt::MiddleButton || (event.button() == Qt::LeftButton && space_held_);
  if (pans) canvas.SetMode(std::make_unique<PanMode>(canvas.GetDocument(), event.position()));
}

bool RestMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.key() == Qt::Key_Backspace) {
    canvas.GetDocument().Zoom().GoBack(canvas.GetDocument().Graph());
    return true;
  }
  if (event.key() != Qt::Key_Space) return false;
  space_held_ = true;
  canvas.setCursor(Cursor());
  return true;
}

bool RestMode::KeyRelease(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.key() != Qt::Key_Space || event.isAutoRepeat()) return false;
  space_held_ = false;
  canvas.setCursor(Cursor());
  return true;
}

QCursor RestMode::Cursor() const {
  return space_held_ ? Qt::OpenHandCursor : Qt::CrossCursor;
}

}  // namespace tarnwick
