#include "graph/paint/mark_painter.h"

#include "graph/layout/plot_layout.h"
#include "graph/paint/plot_pen.h"

namespace tarnwick {
namespace {

void PaintPointMark(QPainter& painter, const MarkItem& item) {
  const QPointF& center = item.point;
  const double radius = item.radius;
  painter.setPen(QPen(QtColor(item.mark.color), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(center, radius, radius);
  painter.drawLine(center - QPointF(radius, 0), center + QPointF(radius, 0));
  painter.drawLine(center - QPointF(0, radius), center + QPointF(0, radius));
}

void PaintHead(QPainter& painter, const QPolygonF& head, const QColor& color) {
  if (head.isEmpty()) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawPolygon(head);
  painter.setBrush(Qt::NoBrush);
}

}  // namespace

void PaintMarks(QPainter& painter, const PlotLayout& layout, PaintTarget target) {
  painter.save();
  painter.setClipRect(layout.plot.adjusted(-1, -1, 1, 1), Qt::IntersectClip);
  CrispPen pen(painter, target);
  for (const MarkItem& item : layout.marks) {
    const QColor color = QtColor(item.mark.color);
    if (item.mark.type == MarkType::Point) PaintPointMark(painter, item);
    if (item.mark.type == MarkType::Rectangle && !item.box.isEmpty()) {
      painter.save();
      painter.setClipRect(layout.plot, Qt::IntersectClip);
      pen.DrawFrame(item.box.adjusted(0, 0, 1, 1), color);  // where lines would stand
      painter.restore();
    } else {
      for (const QLineF& line : item.lines) pen.Draw(line, color);
    }
    PaintHead(painter, HeadOf(item, layout.plot), color);
    if (item.caption) PaintText(painter, *item.caption);
  }
  painter.restore();
}

}  // namespace tarnwick
