#include "graph/paint/axis_painter.h"

#include <algorithm>
#include <cmath>

#include "graph/layout/plot_layout.h"
#include "graph/paint/plot_pen.h"

namespace tarnwick {
namespace {

/// True when the grid line would be drawn over by the line of an axis.
bool LiesOnAxis(const QLineF& line, const PlotLayout& layout) {
  return std::any_of(layout.axes.begin(), layout.axes.end(), [&](const AxisLayout& axis) {
    const bool level = line.y1() == line.y2();
    const bool axis_level = axis.line.y1() == axis.line.y2();
    return axis.shown && level == axis_level &&
           std::abs(level ? line.y1() - axis.line.y1() : line.x1() - axis.line.x1()) < 1;
  });
}

void PaintCross(CrispPen& pen, const Appearance& appearance, const PlotLayout& layout) {
  if (!layout.cross) return;
  const QPointF zero = *layout.cross;
  const double length = appearance.length_of_cross;
  const QRectF& plot = layout.plot;
  const QRectF reach =
      length > 0
          ? plot.intersected(QRectF(zero.x() - length, zero.y() - length, 2 * length, 2 * length))
          : plot;
  const QColor color = QtColor(appearance.color_of_cross);
  pen.Draw({reach.left(), zero.y(), reach.right(), zero.y()}, color);
  pen.Draw({zero.x(), reach.top(), zero.x(), reach.bottom()}, color);
}

}  // namespace

void PaintGrid(QPainter& painter, const Appearance& appearance, const PlotLayout& layout,
               PaintTarget target) {
  CrispPen pen(painter, target);
  const QColor color = QtColor(appearance.grid_color);
  for (const AxisLayout& axis : layout.axes) {
    for (const QLineF& line : axis.grid) {
      if (!LiesOnAxis(line, layout)) pen.Draw(line, color, 1, appearance.grid_line_style);
    }
  }
}

void PaintAxes(QPainter& painter, const Appearance& appearance, const PlotLayout& layout,
               PaintTarget target) {
  CrispPen pen(painter, target);
  const QColor color = QtColor(appearance.axes_color);
  for (const AxisLayout& axis : layout.axes) {
    if (!axis.shown) continue;
    pen.Draw(axis.line, color);
    for (const AxisTick& tick : axis.ticks) pen.Draw(tick.line, color);
    for (const PlacedText& label : axis.labels) PaintText(painter, label);
    if (axis.factor) PaintText(painter, *axis.factor);
    if (axis.title) PaintText(painter, *axis.title);
  }
  PaintCross(pen, appearance, layout);
}

}  // namespace tarnwick
