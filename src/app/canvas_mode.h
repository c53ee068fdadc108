// What mouse and keys mean on a graph's canvas just now: one small class for each way of working. Knows the canvas.
#pragma once

#include <QCursor>

class QKeyEvent;
class QMouseEvent;
class QPainter;

namespace tarnwick {

class GraphCanvas;

class CanvasMode {
 public:
  virtual ~CanvasMode() = default;

  // Events, in the canvas' pixels. A mode ends itself by giving the canvas another one.
  virtual void MousePress(GraphCanvas&, QMouseEvent&) {}
  virtual void MouseMove(GraphCanvas&, QMouseEvent&) {}
  virtual void MouseRelease(GraphCanvas&, QMouseEvent&) {}
  /// True when the key was meant for the mode.
  virtual bool KeyPress(GraphCanvas&, QKeyEvent&) { return false; }
  virtual bool KeyRelease(GraphCanvas&, QKeyEvent&) { return false; }

  /// Draws what the mode shows on top of the finished picture.
  virtual void PaintOverlay(QPainter&, const GraphCanvas&) const {}
  virtual QCursor Cursor() const { return Qt::ArrowCursor; }

 protected:
  CanvasMode() = default;
  CanvasMode(const CanvasMode&) = default;
  CanvasMode& operator=(const CanvasMode&) = default;
};

}  // namespace tarnwick
