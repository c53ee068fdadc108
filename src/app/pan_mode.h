// Dragging the picture: every axis moves with the mouse until the button is let go.
#pragma once

#include <QPointF>
#include <array>

#include "app/canvas_mode.h"
#include "graph/axis_scale.h"

namespace tarnwick {

class Document;

class PanMode final : public CanvasMode {
 public:
  /// Begins at this place of the canvas; the scales before it can be returned to.
  PanMode(Document& document, QPointF start);
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  QCursor Cursor() const override { return Qt::ClosedHandCursor; }

 private:
  QPointF start_;
  std::array<AxisScale, 3> scales_;  // at the start
  bool moved_ = false;
};

}  // namespace tarnwick
