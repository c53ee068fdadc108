#include "app/canvas/overlay.h"

namespace tarnwick {
namespace {

constexpr double kRingRadius = 6;

}  // namespace

void DrawOverlay(QPainter& painter, const QPainterPath& path, const QColor& color,
                 OverlayLine line) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 255, 255, 180), 4));
  painter.drawPath(path);
  QPen pen(color, line == OverlayLine::Dashed ? 1.4 : 2);
  if (line == OverlayLine::Dashed) pen.setDashPattern({4, 3});
  painter.setPen(pen);
  painter.drawPath(path);
}

void DrawOverlayLine(QPainter& painter, QPointF from, QPointF to, const QColor& color,
                     OverlayLine line) {
  QPainterPath path(from);
  path.lineTo(to);
  DrawOverlay(painter, path, color, line);
}

void DrawRing(QPainter& painter, QPointF center, const QColor& color) {
  QPainterPath path;
  path.addEllipse(center, kRingRadius, kRingRadius);
  DrawOverlay(painter, path, color);
}

}  // namespace tarnwick
