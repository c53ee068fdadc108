#include "graph/paint_plot.h"

#include <QPainter>
#include <array>

#include "graph/axis_painter.h"
#include "graph/legend_painter.h"
#include "graph/mark_painter.h"
#include "graph/plot_layout.h"
#include "graph/plot_pen.h"
#include "graph/series_painter.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

void PaintBackground(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                     PaintTarget target) {
  const Appearance& appearance = graph.GetAppearance();
  if (target == PaintTarget::Paper && !appearance.print_with_background) return;
  const CrispPen pen(painter, target);
  painter.fillRect(QRectF(QPointF(0, 0), layout.size), QtColor(appearance.margin_color));
  painter.fillRect(pen.Snapped(layout.plot), QtColor(appearance.color));
  if (!layout.background) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(layout.background->target, layout.background->image, layout.background->source);
}

void PaintAllSeries(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                    PaintTarget target) {
  const QRectF everywhere(QPointF(0, 0), layout.size);
  const bool outside = graph.GetAppearance().show_points_outside_plot_area;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!graph.IsDrawn(series)) continue;
    const SeriesFrame frame{layout.Axis(AxisId::X).scale, layout.Axis(graph.YAxisOf(series)).scale,
                            layout.plot, outside ? everywhere : layout.plot,
                            SolidLineStyle(graph.GetAppearance(), i, target)};
    PaintSeries(painter, series, frame);
    PaintModelCurve(painter, series, frame);
  }
}

void PaintChildren(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                   PaintTarget target) {
  for (const ChildFrame& child : layout.children) {
    const TxyGraph& inserted = *graph.Children().at(child.child);
    painter.save();
    painter.setClipRect(child.frame, Qt::IntersectClip);
    painter.translate(child.frame.topLeft());
    PaintPlot(painter, inserted, child.layout, target);
    CrispPen(painter, target)
        .DrawFrame(QRectF(QPointF(0, 0), child.frame.size()),
                   QtColor(inserted.GetAppearance().axes_color), TxyChildGr::kBorderWidth);
    painter.restore();
  }
}

}  // namespace

LineStyle SolidLineStyle(const Appearance& appearance, std::size_t series, PaintTarget target) {
  constexpr std::array kStyles = {LineStyle::Solid, LineStyle::Dash, LineStyle::Dot,
                                  LineStyle::DashDot, LineStyle::DashDotDot};
  const bool printed = target == PaintTarget::Paper || target == PaintTarget::Metafile;
  return printed && appearance.print_style_for_lines ? kStyles[series % kStyles.size()]
                                                     : LineStyle::Solid;
}

void PaintPlot(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
               PaintTarget target) {
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  PaintBackground(painter, graph, layout, target);
  if (layout.has_scales) {
    const Appearance& appearance = graph.GetAppearance();
    PaintGrid(painter, appearance, layout, target);
    PaintAllSeries(painter, graph, layout, target);
    PaintMarks(painter, layout, target);
    PaintAxes(painter, appearance, layout, target);
    if (layout.title) PaintText(painter, *layout.title);
    if (layout.legend) PaintLegend(painter, graph, *layout.legend, target);
    PaintChildren(painter, graph, layout, target);
  }
  if (layout.message) PaintText(painter, *layout.message);
  painter.restore();
}

}  // namespace tarnwick
