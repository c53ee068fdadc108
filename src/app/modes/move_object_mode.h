// Dragging an object of the picture: the legend, a mark or an end of one. One step when the button is let go; Esc puts
// the object back.
#pragma once

#include <QPointF>
#include <QRectF>
#include <variant>

#include "app/canvas/canvas_mode.h"
#include "app/canvas/picture_object.h"
#include "desk/document/open_edit.h"
#include "graph/mark.h"

namespace tarnwick {

class MoveObjectMode final : public CanvasMode {
 public:
  /// Takes hold of an object of the canvas' picture at a place.
  MoveObjectMode(GraphCanvas& canvas, const PictureObject& object, QPointF start);
  std::string_view Hint() const override { return "Drag the Object to its New Place"; }
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  QCursor Cursor() const override;

 private:
  void MoveTo(GraphCanvas& canvas, QPointF place) const;

  PictureObject object_;
  QPointF start_;
  std::variant<QRectF, Mark> before_;  // legend's frame, mark
  OpenEdit edit_;
};

}  // namespace tarnwick
