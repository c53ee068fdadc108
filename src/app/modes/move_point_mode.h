// Moving points of the current DataSet with the mouse, or with the arrow keys once Return has taken hold of one, until Esc.
#pragma once

#include <QPointF>
#include <optional>

#include "app/canvas/canvas_mode.h"
#include "graph/picking.h"

namespace tarnwick {

class MovePointMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<MovePointMode>; }
  std::string_view Hint() const override { return "Drag the Point to its New Place. Esc ends"; }
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  /// Return takes hold of the picked point and lets it go, arrows move it by a pixel, with SHIFT by ten, Esc lets it be.
  bool KeyPress(GraphCanvas& canvas, QKeyEvent& event) override;
  void PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const override;
  bool ShowsNearestPoint() const override { return !held_; }
  QCursor Cursor() const override;

 private:
  void Hold(const std::optional<PickedPoint>& point, QPointF from);
  void LetGo(GraphCanvas& canvas);

  std::optional<PickedPoint> held_;
  QPointF from_;  // where it was grasped
  QPointF to_;
};

}  // namespace tarnwick
