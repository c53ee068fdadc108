// Adding points to the current DataSet where the mouse is clicked, until Esc.
#pragma once

#include "app/canvas/canvas_mode.h"

namespace tarnwick {

class InsertPointMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<InsertPointMode>; }
  std::string_view Hint() const override { return "Click where the New Point is to be. Esc ends"; }
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  QCursor Cursor() const override;
};

}  // namespace tarnwick
