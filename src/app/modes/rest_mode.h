// The canvas at rest: looking at points, picking one with a click, and beginning what the modifier keys stand for: SHIFT
// zooms a window, CTRL moves an object, ALT draws a trace, Space and the middle button pan.
#pragma once

#include <QPointF>
#include <optional>

#include "app/canvas/canvas_mode.h"
#include "app/canvas/picture_object.h"

namespace tarnwick {

class RestMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<RestMode>; }
  std::string_view Hint() const override {
    return "Hold down SHIFT to zoom window, CTRL to move object, ALT to draw trace";
  }
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  bool KeyPress(GraphCanvas& canvas, QKeyEvent& event) override;
  bool KeyRelease(GraphCanvas& canvas, QKeyEvent& event) override;
  void FocusLost(GraphCanvas& canvas) override;
  /// Esc while there are traces to wipe off or a point is picked.
  bool TakesKey(const GraphCanvas& canvas, int key) const override;
  void PaintOverlay(QPainter& painter, const GraphCanvas& canvas) const override;
  bool ShowsNearestPoint() const override { return !movable_; }
  QCursor Cursor() const override;

 private:
  enum class Held { Nothing, Shift, Ctrl, Alt, Space };
  static Held HeldBy(int key);
  void SetHeld(GraphCanvas& canvas, Held held);
  void PressLeft(GraphCanvas& canvas, QMouseEvent& event);
  void PressOnPicture(GraphCanvas& canvas, const QMouseEvent& event);

  Held held_ = Held::Nothing;
  QPointF place_;                         // of the mouse
  std::optional<PictureObject> movable_;  // under the mouse while CTRL is held
  bool on_handle_ = false;                // of the selected inserted graph
};

}  // namespace tarnwick
