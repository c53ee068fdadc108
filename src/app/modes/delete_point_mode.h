// Deleting points of the current DataSet, one click each, until Esc.
#pragma once

#include <optional>

#include "app/canvas/canvas_mode.h"
#include "graph/picking.h"

namespace tarnwick {

class DeletePointMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<DeletePointMode>; }
  std::string_view Hint() const override { return "Click the Point to Delete. Esc ends"; }
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  /// Return deletes the picked point.
  bool KeyPress(GraphCanvas& canvas, QKeyEvent& event) override;
  bool ShowsNearestPoint() const override { return true; }
  QCursor Cursor() const override;
};

}  // namespace tarnwick
