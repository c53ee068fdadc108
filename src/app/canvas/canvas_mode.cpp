#include "app/canvas/canvas_mode.h"

#include <QKeyEvent>

#include "app/canvas/graph_canvas.h"

namespace tarnwick {

bool CanvasMode::KeyPress(GraphCanvas& canvas, QKeyEvent& event) {
  if (event.key() != Qt::Key_Escape) return false;
  canvas.EndMode();
  return true;
}

bool CanvasMode::TakesKey(const GraphCanvas&, int key) const {
  return key == Qt::Key_Escape;
}

}  // namespace tarnwick
