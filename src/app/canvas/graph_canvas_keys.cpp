// The keys of a graph's canvas: the point that they walk to, and what they move.
#include <QAccessible>
#include <QKeyEvent>

#include "app/canvas/axis_zoom.h"
#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "desk/document/open_edit.h"
#include "desk/widgets/text.h"
#include "graph/edit/child_edit.h"
#include "graph/edit/mark_edit.h"
#include "graph/read_out.h"

namespace tarnwick {

bool GraphCanvas::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      mode_->TakesKey(*this, static_cast<const QKeyEvent*>(event)->key())) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void GraphCanvas::keyPressEvent(QKeyEvent* event) {
  bool meant = false;
  AtTheEdge([&] {
    meant = true;  // also when it fails
    meant = mode_->KeyPress(*this, *event) || MoveByKey(*event) || WalkByKey(*event) ||
            ChangeDataSetByKey(*event) || MenuByKey(*event);
  });
  if (!meant) QWidget::keyPressEvent(event);
}

/// The key of keyboards that have none for menus.
bool GraphCanvas::MenuByKey(const QKeyEvent& event) {
  if (event.key() != Qt::Key_F10 || event.modifiers() != Qt::ShiftModifier) return false;
  // The menu stays open beyond this key's event.
  QMetaObject::invokeMethod(
      this, [this] { emit customContextMenuRequested(rect().center()); }, Qt::QueuedConnection);
  return true;
}

void GraphCanvas::keyReleaseEvent(QKeyEvent* event) {
  bool meant = false;
  AtTheEdge([&] { meant = mode_->KeyRelease(*this, *event); });
  if (!meant) QWidget::keyReleaseEvent(event);
}

void GraphCanvas::focusOutEvent(QFocusEvent* event) {
  mode_->FocusLost(*this);
  QWidget::focusOutEvent(event);
}

bool GraphCanvas::MoveByKey(const QKeyEvent& event) {
  const QPoint way = ArrowWay(event);
  if (way.isNull() || !(event.modifiers() & Qt::ControlModifier)) return false;
  const auto child = document_.SelectedChild();
  const Mark* mark = CurrentMark(document_.Graph());
  if (!child && !mark) return false;
  // Steps of one and the same thing are one; another's are told apart by its number.
  const std::string name = child ? "Move Inserted Graph " + std::to_string(*child + 1)
                                 : "Move Mark " + std::to_string(mark->id);
  OpenEdit step(document_, name, Merging::WithLikeStep);
  if (child) {
    MoveChild(document_.WholeGraph(), *child, way.x(), way.y());
  } else {
    MoveMark(document_.Graph(), mark->id, {1.0 * way.x(), 1.0 * way.y()});
  }
  step.Finish();
  return true;
}

bool GraphCanvas::WalkByKey(const QKeyEvent& event) {
  struct Row {
    int key;
    PointWalk walk;
  };
  static constexpr Row kRows[] = {
      {Qt::Key_Left, PointWalk::Left},       {Qt::Key_Right, PointWalk::Right},
      {Qt::Key_PageUp, PointWalk::PageLeft}, {Qt::Key_PageDown, PointWalk::PageRight},
      {Qt::Key_Home, PointWalk::First},      {Qt::Key_End, PointWalk::Last},
  };
  for (const Row& row : kRows) {
    if (row.key != event.key()) continue;
    if (selection_.Walk(row.walk)) ShowPicked();
    return true;
  }
  return false;
}

bool GraphCanvas::ChangeDataSetByKey(const QKeyEvent& event) {
  const bool up = event.key() == Qt::Key_Up;
  if (!up && event.key() != Qt::Key_Down) return false;
  TxyGraph& graph = document_.Graph();
  const auto picked = Picked();
  const std::int32_t next = graph.CurrentSeriesIndex() + (up ? -1 : 1);
  if (next < 0 || next >= static_cast<std::int32_t>(graph.SeriesCount())) return true;
  graph.SetCurrentSeriesIndex(next);
  Pick(picked ? PickPoint(graph, picked->x) : std::nullopt);
  return true;
}

void GraphCanvas::Pick(const std::optional<PickedPoint>& point) {
  selection_.Take(point);
  ShowPicked();
}

QString GraphCanvas::PickedText() const {
  return Picked() ? ToQt(PointText(document_.Graph(), Picked())) : QString();
}

void GraphCanvas::ShowPicked() {
  hovered_.reset();
  update();
  if (Picked()) {
    TAxis& axis = document_.Graph().Axis(AxisId::X);
    if (const auto range = RangeShowing(axis.Scale(), Picked()->x)) {
      RememberScales(document_.Zoom(), document_.Graph());
      document_.Graph().BeginUpdate();
      axis.SetMin(range->min);
      axis.SetMax(range->max);
      document_.Graph().EndUpdate();
    }
  }
  emit readOutChanged(ReadOutAtRest());
  NameForAssistance();
  QAccessibleValueChangeEvent spoken(this, PickedText());
  QAccessible::updateAccessibility(&spoken);
  document_.Pick(Picked());
}

void GraphCanvas::FollowPick() {
  const std::optional<PickedPoint>& point = document_.Picked();
  if (point && (!Picked() || Picked()->number != point->number)) Pick(point);
}

void GraphCanvas::NameForAssistance() {
  const TSeries* series = document_.Graph().CurrentSeries();
  QString name = tr("Graph %1").arg(ToQt(document_.Name()));
  if (Picked() && series) name += ", " + ToQt(series->SeriesName()) + " " + PickedText();
  setAccessibleName(name);  // tells that it changed, which screen readers speak
}

}  // namespace tarnwick
