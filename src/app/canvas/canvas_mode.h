// What mouse and keys mean on a graph's canvas just now: one small class for each way of working. Knows the canvas; which
// modes there are, the canvas does not know.
#pragma once

#include <QCursor>
#include <memory>
#include <string_view>

#include "desk/commands/mode_host.h"

class QKeyEvent;
class QMouseEvent;
class QPainter;

namespace tarnwick {

class GraphCanvas;

class CanvasMode {
 public:
  virtual ~CanvasMode() = default;

  /// What makes the mode, by which commands know it; null for one that no command begins.
  virtual ModeMaker Maker() const { return nullptr; }
  /// What the status line says while the mode is on.
  virtual std::string_view Hint() const = 0;

  // Events, in the canvas' pixels. A mode ends itself by giving the canvas another one. They may throw Error, which the
  // canvas tells the user.
  virtual void MousePress(GraphCanvas&, QMouseEvent&) {}
  virtual void MouseMove(GraphCanvas&, QMouseEvent&) {}
  virtual void MouseRelease(GraphCanvas&, QMouseEvent&) {}
  /// True when the key was meant for the mode. Esc ends every mode.
  virtual bool KeyPress(GraphCanvas& canvas, QKeyEvent& event);
  virtual bool KeyRelease(GraphCanvas&, QKeyEvent&) { return false; }
  virtual void FocusLost(GraphCanvas&) {}
  /// True when the mode wants that key even where it is the shortcut of a command.
  virtual bool TakesKey(const GraphCanvas& canvas, int key) const;

  /// Draws what the mode shows on top of the finished picture.
  virtual void PaintOverlay(QPainter&, const GraphCanvas&) const {}
  /// Whether the point nearest to the mouse is ringed.
  virtual bool ShowsNearestPoint() const { return false; }
  virtual QCursor Cursor() const { return Qt::ArrowCursor; }

 protected:
  CanvasMode() = default;
  CanvasMode(const CanvasMode&) = default;
  CanvasMode& operator=(const CanvasMode&) = default;
};

template <class Mode>
std::unique_ptr<CanvasMode> MakeMode() {
  return std::make_unique<Mode>();
}

}  // namespace tarnwick
