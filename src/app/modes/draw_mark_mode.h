// Drawing one mark with the mouse: a click places it, one with two ends is dragged or takes two clicks, a
// text is asked for. Ends when it is drawn.
#pragma once

#include <QPointF>
#include <optional>
#include <string>

#include "app/canvas/canvas_mode.h"
#include "graph/mark.h"

namespace tarnwick {

class DrawMarkMode final : public CanvasMode {
 public:
  explicit DrawMarkMode(MarkType type) : type_(type) {}
  ModeMaker Maker() const override;
  std::string_view Hint() const override;
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  void PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const override;
  QCursor Cursor() const override;

 private:
  void Draw(GraphCanvas& canvas, const std::string& caption) const;

  MarkType type_;
  std::optional<QPointF> start_;  // of one with two ends
  std::optional<QPointF> place_;  // of the mouse
};

template <MarkType kType>
std::unique_ptr<CanvasMode> MakeDrawMarkMode() {
  return std::make_unique<DrawMarkMode>(kType);
}

}  // namespace tarnwick
