#include "app/canvas/current_mark.h"

#include <QPainter>
#include <algorithm>

#include "app/canvas/child_grip.h"
#include "app/canvas/overlay.h"

namespace tarnwick {

void PaintCurrentMark(QPainter& painter, const PlotLayout& layout, std::int32_t current) {
  const auto item = std::ranges::find_if(
      layout.marks, [&](const MarkItem& one) { return one.mark.id == current; });
  if (item == layout.marks.end()) return;
  if (item->mark.type == MarkType::Point) {
    QPainterPath ring;
    ring.addEllipse(item->point, item->radius + 3, item->radius + 3);
    DrawOverlay(painter, ring, kOverlayBlue);
    return;
  }
  if (item->mark.type == MarkType::Text && item->caption) {
    QPainterPath frame;
    frame.addRect(item->caption->Box().adjusted(-2, -1, 2, 1));
    DrawOverlay(painter, frame, kOverlayBlue);
    return;
  }
  for (const QPointF end : {item->line.p1(), item->line.p2()}) {
    if (layout.plot.adjusted(-1, -1, 1, 1).contains(end)) PaintHandle(painter, end);
  }
}

}  // namespace tarnwick
