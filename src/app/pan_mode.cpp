#include "app/pan_mode.h"

#include <QMouseEvent>
#include <memory>

#include "app/axis_zoom.h"
#include "app/graph_canvas.h"
#include "app/rest_mode.h"

namespace tarnwick {
namespace {

constexpr std::array kAxes = {AxisId::X, AxisId::Y, AxisId::Y2};

}  // namespace

PanMode::PanMode(Document& document, QPointF start) : start_(start) {
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    scales_[i] = document.Graph().Axis(kAxes[i]).Scale();
  }
}

void PanMode::MouseMove(GraphCanvas& canvas, QMouseEvent& event) {
  Document& document = canvas.GetDocument();
  if (!moved_) document.Zoom().Remember(document.Graph());
  moved_ = true;
  const QPointF way = event.position() - start_;
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
  canvas.SetMode(std::make_unique<RestMode>());
}

}  // namespace tarnwick
