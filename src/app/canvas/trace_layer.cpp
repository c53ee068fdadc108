#include "app/canvas/trace_layer.h"

#include <cmath>

#include "app/canvas/overlay.h"
#include "graph/layout/plot_layout.h"

namespace tarnwick {
namespace {

QPainterPath PathOf(const std::vector<QPointF>& values, const AxisScale& x, const AxisScale& y) {
  QPainterPath path;
  bool begun = false;
  for (const QPointF& value : values) {
    const QPointF place(x.Position(value.x()), y.Position(value.y()));
    // Not in the map of a scale that became logarithmic.
    const bool drawable = std::isfinite(place.x()) && std::isfinite(place.y());
    if (drawable && begun) path.lineTo(place);
    if (drawable && !begun) path.moveTo(place);
    begun = drawable;
  }
  return path;
}

}  // namespace

void TraceLayer::Paint(QPainter& painter, const PlotLayout& layout,
                       std::optional<std::size_t> child) const {
  if (traces_.empty()) return;
  painter.save();
  painter.setClipRect(layout.plot);
  for (const Trace& trace : traces_) {
    if (trace.child != child) continue;
    DrawOverlay(painter,
                PathOf(trace.values, layout.Axis(AxisId::X).scale, layout.Axis(trace.y_axis).scale),
                kOverlayRed);
  }
  painter.restore();
}

}  // namespace tarnwick
