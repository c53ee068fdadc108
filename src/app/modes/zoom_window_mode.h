// Zooming to a rectangle that is drawn with the mouse.
#pragma once

#include <QPointF>
#include <QRectF>
#include <optional>

#include "app/canvas/canvas_mode.h"

namespace tarnwick {

class ZoomWindowMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<ZoomWindowMode>; }
  std::string_view Hint() const override { return "Drag Across the Area to Enlarge"; }
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  /// Ends the mode. A drag along one axis only zooms that axis; hardly any drag zooms nothing.
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  void PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const override;
  QCursor Cursor() const override;

 private:
  /// What the drag spans of the plot: all of it along an axis that the drag leaves alone.
  std::optional<QRectF> Area(const QRectF& plot) const;

  std::optional<QPointF> start_;
  QPointF end_;
};

}  // namespace tarnwick
