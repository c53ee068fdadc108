#include "graph/paint/axis_painter.h"

#include <algorithm>
#include <cmath>

#include "graph/layout/plot_layout.h"
#include "graph/paint/plot_pen.h"

namespace tarnwick {
namespace {

/// True when the grid line would be drawn over by the line of an axis.
bool LiesOnAxis(const QLineF& line, const PlotLayout& layout) {
  const std::vector<const AxisLayout*> axes = layout.ShownAxes();
  return std::any_of(axes.begin(), axes.end(), [&](const AxisLayout* axis) {
    const bool level = line.y1() == line.y2();
    const bool axis_level = axis->line.y1() == axis->line.y2();
    return level == axis_level &&
           std::abs(level ? line.y1() - axis->line.y1() : line.x1() - axis->line.x1()) < 1;
  });
}

void PaintGridOf(CrispPen& pen, const Appearance& appearance, const AxisLayout& axis,
                 const PlotLayout& layout) {
  for (const QLineF& line : axis.grid) {
    if (!LiesOnAxis(line, layout))
      pen.Draw(line, QtColor(appearance.grid_color), 1, appearance.grid_line_style);
  }
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
  for (const AxisLayout& axis : layout.axes) PaintGridOf(pen, appearance, axis, layout);
  if (!layout.panel) return;
  PaintGridOf(pen, appearance, layout.panel->y, layout);
  // A shade of the axes' colour, so that it stays behind the data.
  QColor zero = QtColor(appearance.axes_color);
  zero.setAlphaF(0.5F);
  if (layout.panel->zero) pen.Draw(*layout.panel->zero, zero);
}

void PaintAxes(QPainter& painter, const Appearance& appearance, const PlotLayout& layout,
               PaintTarget target) {
  CrispPen pen(painter, target);
  const QColor color = QtColor(appearance.axes_color);
  for (const AxisLayout* axis : layout.ShownAxes()) {
    pen.Draw(axis->line, color);
    for (const AxisTick& tick : axis->ticks) pen.Draw(tick.line, color);
    for (const PlacedText& label : axis->labels) PaintText(painter, label);
    if (axis->factor) PaintText(painter, *axis->factor);
    if (axis->title) PaintText(painter, *axis->title);
  }
  const bool shows_x = layout.Axis(AxisId::X).shown;
  if (shows_x && layout.panel && layout.panel->plot_edge) pen.Draw(*layout.panel->plot_edge, color);
  PaintCross(pen, appearance, layout);
}

}  // namespace tarnwick
