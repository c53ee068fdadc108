#include "app/modes/pan_mode.h"

#include <QMouseEvent>
#include <array>

#include "app/canvas/axis_zoom.h"
#include "app/canvas/graph_canvas.h"

namespace tarnwick {
namespace {

constexpr std::array kAxes = {AxisId::X, AxisId::Y, AxisId::Y2};

}  // namespace

PanMode::PanMode(const Document& document, QPointF start) : one_drag_(true) {
  Grasp(document, start);
}

void PanMode::Grasp(const Document& document, QPointF start) {
  start_ = start;
  moved_ = false;
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    scales_[i] = document.Graph().Axis(kAxes[i]).Scale();
  }
}

void PanMode::MousePress(GraphCanvas& canvas, QMouseEvent& event) {
  if (start_ || event.button() != Qt::LeftButton) return;
  Grasp(canvas.GetDocument(), event.position());
  canvas.setCursor(Cursor());
}

void PanMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  if (!start_) return;
  Document& document = canvas.GetDocument();
  if (!moved_) document.Zoom().Remember(document.Graph());
  moved_ = true;
  const QPointF way = event.position() - *start_;
  document.Graph().BeginUpdate();
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    const double pixels = kAxes[i] == AxisId::X ? way.x() : way.y();
    const auto range = DraggedRange(scales_[i], pixels);
    if (!range) continue;
    document.Graph().Axis(kAxes[i]).SetMin(range->min);
    document.Graph().Axis(kAxes[i]).SetMax(range->max);
  }
  document.Graph().EndUpdate();
}

void PanMode::MouseRelease(GraphCanvas& canvas, QMouseEvent&) {
  if (one_drag_) {
    canvas.EndMode();
    return;
  }
  start_.reset();
  canvas.setCursor(Cursor());
}

}  // namespace tarnwick
