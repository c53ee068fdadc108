// Moving and sizing the selected inserted graph by its body and its handles. Knows the canvas and the whole graph.
#pragma once

#include <QPointF>
#include <memory>
#include <optional>

#include "app/canvas/canvas_mode.h"
#include "app/canvas/child_grip.h"

namespace tarnwick {

class OpenEdit;

class ChildFrameMode final : public CanvasMode {
 public:
  /// The mode that a press there begins; null when it meets nothing of the selected inserted graph.
  static std::unique_ptr<CanvasMode> At(const GraphCanvas& canvas, const QMouseEvent& press);
  /// The cursor over a handle of the selected inserted graph; nothing elsewhere.
  static std::optional<QCursor> CursorAt(const GraphCanvas& canvas, const QMouseEvent& move);

  /// `child` is an inserted graph of the canvas' document, `start` on the screen.
  ChildFrameMode(const GraphCanvas& canvas, std::size_t child, ChildGrip grip, QPointF start);
  /// Takes back what was not finished.
  ~ChildFrameMode() override;

  std::string_view Hint() const override { return "Drag the Object to its New Place"; }
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  bool KeyPress(GraphCanvas& canvas, QKeyEvent& event) override;
  QCursor Cursor() const override { return CursorOf(grip_); }

 private:
  std::size_t child_;
  ChildGrip grip_;
  QPointF start_;
  TxyChildGr::Place place_;         // before the drag
  std::unique_ptr<OpenEdit> edit_;  // since the mouse has left its place for good
};

}  // namespace tarnwick
