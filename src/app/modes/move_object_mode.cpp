#include "app/modes/move_object_mode.h"

#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "app/canvas/canvas_cursor.h"
#include "app/canvas/graph_canvas.h"
#include "graph/edit/mark_edit.h"
#include "graph/layout/automatic_legend.h"

namespace tarnwick {
namespace {

const char* StepName(PictureObject::Kind kind) {
  return kind == PictureObject::Kind::Legend ? "Move Legend" : "Move Mark";
}

/// The distance from the nearer of two edges as a legend keeps it: from the far one below zero.
std::int32_t KeptDistance(double begin, double length, double whole) {
  const double farthest = std::max(whole - length, 0.0);
  const double kept = std::clamp(begin, 0.0, farthest);
  const bool from_far = kept > farthest / 2;
  if (!from_far) return static_cast<std::int32_t>(std::lround(kept));
  return std::min(static_cast<std::int32_t>(std::lround(kept - farthest)), -1);
}

void PlaceLegend(TxyGraph& graph, const QRectF& frame, QSizeF picture) {
  Legend legend = ChosenByHand(graph.GetLegend());
  legend.left = KeptDistance(frame.left(), frame.width(), picture.width());
  legend.top = KeptDistance(frame.top(), frame.height(), picture.height());
  graph.SetLegend(legend);
}

MarkPart PartOf(PictureObject::Kind kind) {
  if (kind == PictureObject::Kind::MarkOrigin) return MarkPart::Origin;
  return kind == PictureObject::Kind::MarkEnd ? MarkPart::End : MarkPart::Whole;
}

std::variant<QRectF, Mark> StateOf(const GraphCanvas& canvas, const PictureObject& object) {
  const TxyGraph& graph = canvas.GetDocument().Graph();
  const Mark* mark = graph.Marks().FindMark(object.id);
  if (object.IsOfMark() && mark) return *mark;
  return OutlineOf(canvas.Layout(), object).boundingRect();
}

}  // namespace

MoveObjectMode::MoveObjectMode(GraphCanvas& canvas, const PictureObject& object, QPointF start)
    : object_(object),
      start_(start),
      before_(StateOf(canvas, object)),
      edit_(canvas.GetDocument(), StepName(object.kind)) {}

void MoveObjectMode::MoveTo(GraphCanvas& canvas, QPointF place) const {
  TxyGraph& graph = canvas.GetDocument().Graph();
  const QPointF way = place - start_;
  const auto* frame = std::get_if<QRectF>(&before_);
  if (frame && object_.kind == PictureObject::Kind::Legend) {
    PlaceLegend(graph, frame->translated(way), canvas.Layout().size);
  } else if (const auto* mark = std::get_if<Mark>(&before_)) {
    SetMark(graph, MovedMark(graph, *mark, {way.x(), way.y()}, PartOf(object_.kind)));
  }
}

void MoveObjectMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  MoveTo(canvas, event.position());
}

void MoveObjectMode::MouseRelease(GraphCanvas& canvas, QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  if (event.position() != start_) MoveTo(canvas, event.position());
  edit_.Finish();
  canvas.EndMode();
}

QCursor MoveObjectMode::Cursor() const {
  return Qt::ClosedHandCursor;
}

}  // namespace tarnwick
