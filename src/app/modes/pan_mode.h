// Dragging the picture: every axis moves with the mouse until the button is let go.
#pragma once

#include <QPointF>
#include <array>
#include <optional>

#include "app/canvas/canvas_mode.h"
#include "graph/axes/axis_scale.h"

namespace tarnwick {

class Document;

class PanMode final : public CanvasMode {
 public:
  /// Waits for the left button, and for it again after each drag, until Esc.
  PanMode() = default;
  /// One drag, begun at this place of the canvas; the scales before it can be returned to.
  PanMode(const Document& document, QPointF start);
  ModeMaker Maker() const override { return MakeMode<PanMode>; }
  std::string_view Hint() const override { return "Drag the Picture. Esc ends"; }
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  QCursor Cursor() const override { return start_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor; }

 private:
  void Grasp(const Document& document, QPointF start);

  std::optional<QPointF> start_;
  std::array<AxisScale, 3> scales_;  // at the start
  bool one_drag_ = false;
  bool moved_ = false;
};

}  // namespace tarnwick
