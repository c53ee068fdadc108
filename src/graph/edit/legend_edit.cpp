#include "graph/edit/legend_edit.h"

#include <cmath>

#include "graph/layout/automatic_legend.h"
#include "graph/layout/plot_layout.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kInset = 8;  // of the standard legend from the plot's edges

}  // namespace

void ResetLegend(TxyGraph& graph) {
  Legend legend;
  legend.font = graph.GetLegend().font;
  legend.left = graph.PixelOrigin(AxisId::X) + kInset;
  legend.top = graph.PixelOrigin(AxisId::Y) + kInset;
  legend.height = 24;
  graph.SetLegend(legend);
}

void SetLegendLayout(TxyGraph& graph, LegendLayout mode, const TextMetrics& metrics) {
  Legend legend = ChosenByHand(graph.GetLegend());
  legend.visible = true;
  if (mode == LegendLayout::Free && legend.layout_mode == LegendLayout::Horizontal) {
    // Free entries flow down, and a box as low as the horizontal one would hide most.
    legend.layout_mode = LegendLayout::Vertical;
    legend.width = 0;
    graph.SetLegend(legend);
  }
  const QSizeF size(graph.ClientWidth(), graph.ClientHeight());
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  if (mode == LegendLayout::Free && layout.legend) {
    const QRectF& frame = layout.legend->frame;
    const auto whole = [](double pixels) { return static_cast<std::int32_t>(std::ceil(pixels)); };
    legend.left = static_cast<std::int32_t>(std::lround(frame.left()));
    legend.top = static_cast<std::int32_t>(std::lround(frame.top()));
    legend.width = whole(frame.width());
    legend.height = whole(frame.height());
  } else if (legend.layout_mode == LegendLayout::Free) {
    legend.width = 0;  // a width of its own would squeeze the others
  }
  legend.layout_mode = mode;
  graph.SetLegend(legend);
}

}  // namespace tarnwick
