#include "graph/paint/paint_plot.h"

#include <QPainter>
#include <array>

#include "graph/layout/plot_layout.h"
#include "graph/paint/axis_painter.h"
#include "graph/paint/legend_painter.h"
#include "graph/paint/mark_painter.h"
#include "graph/paint/plot_pen.h"
#include "graph/paint/series_painter.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// What is painted on, and the appearance of the whole graph, which decides for the inserted ones, too, how it is printed.
struct Printing {
  PaintTarget target;
  const Appearance& whole;
  bool WithBackground() const {
    return target != PaintTarget::Paper || whole.print_with_background;
  }
};

void PaintGraph(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                const Printing& printing);

void PaintBackground(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                     PaintTarget target) {
  const Appearance& appearance = graph.GetAppearance();
  const CrispPen pen(painter, target);
  painter.fillRect(QRectF(QPointF(0, 0), layout.size), QtColor(appearance.margin_color));
  painter.fillRect(pen.Snapped(layout.plot), QtColor(appearance.color));
  if (layout.panel) painter.fillRect(pen.Snapped(layout.panel->plot), QtColor(appearance.color));
  if (!layout.background) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(layout.background->target, layout.background->image, layout.background->source);
}

void PaintAllSeries(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                    const Printing& printing) {
  const QRectF everywhere(QPointF(0, 0), layout.size);
  const bool outside = graph.GetAppearance().show_points_outside_plot_area;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!IsDrawn(graph, series)) continue;
    const QRectF& plot = layout.PlotOf(series);
    const SeriesFrame frame{layout.Axis(AxisId::X).scale, layout.YScaleOf(series), plot,
                            outside ? everywhere : plot,
                            SolidLineStyle(printing.whole, i, printing.target)};
    PaintSeries(painter, series, frame);
    PaintModelCurve(painter, series, frame);
  }
}

void PaintChildren(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                   const Printing& printing) {
  for (const ChildFrame& child : layout.children) {
    const TxyGraph& inserted = *graph.Children().at(child.child);
    painter.save();
    painter.setClipRect(child.frame, Qt::IntersectClip);
    // Without its background, what lies behind an inserted graph would be seen through it.
    if (!printing.WithBackground()) painter.fillRect(child.frame, Qt::white);
    painter.translate(child.frame.topLeft());
    PaintGraph(painter, inserted, child.layout, printing);
    CrispPen(painter, printing.target)
        .DrawFrame(QRectF(QPointF(0, 0), child.frame.size()),
                   QtColor(inserted.GetAppearance().axes_color), TxyChildGr::kBorderWidth);
    painter.restore();
  }
}

void PaintGraph(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
                const Printing& printing) {
  const PaintTarget target = printing.target;
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  if (printing.WithBackground()) PaintBackground(painter, graph, layout, target);
  if (layout.has_scales) {
    const Appearance& appearance = graph.GetAppearance();
    if (!appearance.grid_drawn_last) PaintGrid(painter, appearance, layout, target);
    PaintAllSeries(painter, graph, layout, printing);
    if (appearance.grid_drawn_last) PaintGrid(painter, appearance, layout, target);
    PaintMarks(painter, layout, target);
    PaintAxes(painter, appearance, layout, target);
    if (layout.title) PaintText(painter, *layout.title);
    if (layout.legend) PaintLegend(painter, graph, *layout.legend, target, printing.whole);
    PaintChildren(painter, graph, layout, printing);
  }
  if (layout.message) PaintText(painter, *layout.message);
  painter.restore();
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
  PaintGraph(painter, graph, layout, {target, graph.GetAppearance()});
}

}  // namespace tarnwick
