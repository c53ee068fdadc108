#include "graph/paint/legend_painter.h"

#include "graph/layout/plot_layout.h"
#include "graph/paint/error_bar_painter.h"
#include "graph/paint/plot_pen.h"
#include "graph/paint/series_painter.h"
#include "graph/xy_graph.h"

namespace tarnwick {

void PaintLegend(QPainter& painter, const TxyGraph& graph, const LegendBox& box, PaintTarget target,
                 const Appearance& whole) {
  const Legend& legend = graph.GetLegend();
  CrispPen pen(painter, target);
  painter.fillRect(pen.Snapped(box.frame), QtColor(legend.color));
  if (legend.border_style != 0) {
    // A shade of the axes' colour, so that the frame stays behind the data.
    QColor border = QtColor(graph.GetAppearance().axes_color);
    border.setAlphaF(0.35F);
    pen.DrawFrame(box.frame, border);
  }
  painter.save();
  painter.setClipRect(box.frame, Qt::IntersectClip);
  for (const LegendRow& row : box.rows) {
    const TSeries& series = graph.Series(row.series);
    if (row.entry == LegendEntry::ModelCurve) {
      PaintModelCurveSample(painter, row.sample, series);
    } else {
      SeriesStyle style = series.Style();
      if (style.line_style == LineStyle::Solid)
        style.line_style = SolidLineStyle(whole, row.series, target);
      PaintErrorBarSample(painter, row.sample, series);
      PaintSeriesSample(painter, row.sample, style);
    }
    PaintText(painter, row.name);
  }
  if (box.more) PaintText(painter, *box.more);
  painter.restore();
}

}  // namespace tarnwick
