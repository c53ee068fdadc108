// Shows one document's graph and turns wheel, mouse and keys into what the present mode makes of them. Knows layout,
// painter and read-out; holds no decision about files.
#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "app/canvas/canvas_mode.h"
#include "app/canvas/point_selection.h"
#include "app/canvas/trace_layer.h"
#include "desk/document/document.h"
#include "graph/layout/plot_layout.h"
#include "graph/picking.h"

namespace tarnwick {

class GraphCanvas final : public QWidget, public ModeHost {
  Q_OBJECT

 public:
  /// `document` and `prompt` outlive the canvas; `rest` makes the mode that it has while no other is on.
  GraphCanvas(Document& document, Prompt& prompt, ModeMaker rest, QWidget* parent = nullptr);
  ~GraphCanvas() override;

  Document& GetDocument() const { return document_; }
  /// What modes ask through.
  Prompt& GetPrompt() const { return prompt_; }
  /// Where everything of the whole picture is, at its present size.
  const PlotLayout& WholeLayout() const { return layout_; }
  /// The same of the graph worked on. Modes get the mouse in its pixels and draw in them.
  const PlotLayout& Layout() const;
  /// Where those pixels begin on the canvas: at the frame of the selected inserted graph.
  QPointF Origin() const;
  /// The frame of an inserted graph; null while it is not drawn.
  const ChildFrame* FrameOf(std::optional<std::size_t> child) const;
  /// The topmost inserted graph there.
  std::optional<std::size_t> ChildAt(QPointF place) const;

  const CanvasMode& Mode() const { return *mode_; }
  void SwitchMode(ModeMaker maker) override;
  bool IsOn(ModeMaker maker) const override;
  bool AtRest() const { return IsOn(rest_); }
  /// The canvas is at rest again.
  void EndMode();
  /// Puts another mode in place of the present one.
  void SetMode(std::unique_ptr<CanvasMode> mode);
  /// Ends the present mode and gives the new one the press of a button that began it.
  void BeginMode(std::unique_ptr<CanvasMode> mode, QMouseEvent& press);

  /// The point that was picked by a click or the keys.
  const std::optional<PickedPoint>& Picked() const { return selection_.Point(); }
  /// Picks a point of the current DataSet: shows it, reads it out and tells assistive technology.
  void Pick(const std::optional<PickedPoint>& point);
  /// "pnt#3  X,Y: 1, 2", empty when none is picked.
  QString PickedText() const;
  /// The status line's text while the mouse is elsewhere: the picked point, where there is one.
  QString ReadOutAtRest() const;
  /// Reads out a place of the picture as for the mouse, in the pixels of the graph worked on.
  void ShowReadOutAt(QPointF place);
  TraceLayer& Traces() { return traces_; }
  const TraceLayer& Traces() const { return traces_; }

  QSize sizeHint() const override { return {640, 440}; }
  QSize minimumSizeHint() const override { return {160, 120}; }

 signals:
  /// The status line's text for where the mouse is.
  void readOutChanged(const QString& text);
  /// The mouse button was let go: what hangs on the graph's state may be other now.
  void mouseReleased();
  /// The part of the picture that was clicked last is wanted to be changed.
  void editWanted();
  /// What mouse and keys mean is another thing now.
  void modeChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Redraw();
  void RenderPicture();
  void PaintTraces(QPainter& painter) const;
  void PaintHoveredPoint(QPainter& painter) const;
  void PaintPickedPoint(QPainter& painter) const;
  std::optional<QPointF> PlaceInPlot(const PickedPoint& point) const;
  bool WalkByKey(const QKeyEvent& event);
  bool MenuByKey(const QKeyEvent& event);
  bool ChangeDataSetByKey(const QKeyEvent& event);
  bool MoveByKey(const QKeyEvent& event);
  /// Shows the point that was picked elsewhere.
  void FollowPick();
  void ShowPicked();
  void NameForAssistance();
  /// Does what an event asks for; an Error is told the user.
  void AtTheEdge(const std::function<void()>& work);
  void SelectGraphAt(QPointF place);
  QMouseEvent Shifted(const QMouseEvent& event) const;
  /// Keeps the scales to come back to, once for steps close in time.
  void RememberScales(ZoomStack& zoom, const TxyGraph& graph);
  void ZoomAt(QPointF position, Qt::KeyboardModifiers modifiers, double factor);

  Document& document_;
  Prompt& prompt_;
  ModeMaker rest_;
  std::unique_ptr<CanvasMode> mode_;
  std::vector<std::unique_ptr<CanvasMode>>
      ended_modes_;  // kept until the event they ended in is over
  PointSelection selection_;
  TraceLayer traces_;
  QImage picture_;
  PlotLayout layout_;
  bool picture_stale_ = true;
  std::optional<PickedPoint> hovered_;
  QTimer look_timer_;        // a window being dragged to another size is arranged when it rests
  QElapsedTimer last_zoom_;  // wheel steps close in time are one zoom to return from
};

}  // namespace tarnwick
