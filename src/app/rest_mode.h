// The canvas at rest: looking at points under the mouse, and beginning to pan.
#pragma once

#include <QPointF>
#include <optional>

#include "app/canvas_mode.h"

namespace tarnwick {

class RestMode final : public CanvasMode {
 public:
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  bool KeyPress(GraphCanvas& canvas, QKeyEvent& event) override;
  bool KeyRelease(GraphCanvas& canvas, QKeyEvent& event) override;
  QCursor Cursor() const override;

 private:
  bool space_held_ = false;  // the left button pans meanwhile
};

}  // namespace tarnwick
