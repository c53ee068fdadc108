#include "graph/finished_look.h"

#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "graph/plot_layout.h"
#include "graph/plot_metrics.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kEdge = 8;                    // pixels kept free around everything
constexpr int kInset = 10;                  // of the legend from the plot's edges
constexpr std::int32_t kDensePoints = 200;  // more than these are a line, fewer have symbols
constexpr int kSampledPoints = 400;  // looked at per DataSet when the legend's corner is chosen

Font MakeFont(int size, bool bold) {
  Font font;
  font.size = size;
  font.bold = bold;
  return font;
}

/// Largest share of the picture that the two margins of one direction may take.
constexpr double kLargestMarginShare = 0.6;

/// Margins as wide as their contents: measured on a layout with room for everything.
Dimensions FittingMargins(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  Dimensions dimensions = graph.GetDimensions();
  dimensions.left_margin = dimensions.right_margin = static_cast<int>(size.width() * 0.28);
  dimensions.top_margin = dimensions.bottom_margin = static_cast<int>(size.height() * 0.28);
  graph.SetDimensions(dimensions);
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  if (!layout.has_scales) return Dimensions{};
  QRectF content = layout.plot;
  for (const AxisLayout& axis : layout.axes) {
    if (!axis.shown) continue;
    for (const PlacedText& label : axis.labels) content = content.united(label.Box());
    if (axis.title) content = content.united(axis.title->Box());
  }
  const double line = metrics.LineHeight(graph.GetAppearance().font_for_title);
  const bool above =
      std::any_of(layout.axes.begin(), layout.axes.end(),
                  [](const AxisLayout& axis) { return axis.shown && axis.exponent != 0; });
  const double factor = above ? metrics.LineHeight(graph.GetAppearance().font_for_labels) + 4 : 0;
  dimensions.left_margin = kEdge + static_cast<int>(std::ceil(layout.plot.left() - content.left()));
  dimensions.right_margin =
      2 * kEdge + static_cast<int>(std::ceil(content.right() - layout.plot.right()));
  dimensions.bottom_margin =
      kEdge + static_cast<int>(std::ceil(content.bottom() - layout.plot.bottom()));
  const bool titled = !graph.GetAppearance().title_of_graph.empty();
  dimensions.graph_title_offset = kEdge + static_cast<int>(std::ceil(line / 2 + factor));
  dimensions.top_margin =
      titled ? dimensions.graph_title_offset + static_cast<int>(std::ceil(line / 2)) + kEdge
             : 2 * kEdge + static_cast<int>(factor);
  return dimensions;
}

/// Small pictures keep a plot: margins shrink together.
void LimitMargins(Dimensions& dimensions, QSizeF size) {
  const auto limit = [](std::int32_t& first, std::int32_t& second, double whole) {
    const double share = (first + second) / (whole * kLargestMarginShare);
    if (share <= 1) return;
    first = static_cast<std::int32_t>(first / share);
    second = static_cast<std::int32_t>(second / share);
  };
  limit(dimensions.left_margin, dimensions.right_margin, size.width());
  limit(dimensions.top_margin, dimensions.bottom_margin, size.height());
}

/// Where points of the drawn DataSets lie in the picture, a sample of each.
std::vector<QPointF> SampledPixels(const TxyGraph& graph, const PlotLayout& layout) {
  std::vector<QPointF> pixels;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!graph.IsDrawn(series)) continue;
    const PointChain& points = series.Points();
    const std::size_t step = std::max<std::size_t>(points.Size() / kSampledPoints, 1);
    const AxisScale& y_scale = layout.Axis(graph.YAxisOf(series)).scale;
    for (std::size_t at = 0; at < points.Size(); at += step) {
      const Point point = points.At(at);
      pixels.emplace_back(layout.Axis(AxisId::X).scale.Position(point.x),
                          y_scale.Position(series.CorrectedY(point.x, point.y)));
    }
  }
  return pixels;
}

/// Puts the legend into the corner of the plot where it covers the fewest points.
void PlaceLegend(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  if (!layout.legend) return;
  const QSizeF box = layout.legend->frame.size();
  const QRectF inside =
      layout.plot.adjusted(kInset, kInset, -kInset - box.width(), -kInset - box.height());
  const std::vector<QPointF> pixels = SampledPixels(graph, layout);
  const std::array corners = {
      QPointF(inside.right(), inside.top()), QPointF(inside.left(), inside.top()),
      QPointF(inside.left(), inside.bottom()), QPointF(inside.right(), inside.bottom())};
  const auto covered = [&](const QPointF& corner) {
    const QRectF frame = QRectF(corner, box).adjusted(-3, -3, 3, 3);
    return std::count_if(pixels.begin(), pixels.end(),
                         [&](const QPointF& pixel) { return frame.contains(pixel); });
  };
  const auto best =
      std::min_element(corners.begin(), corners.end(),
                       [&](const auto& a, const auto& b) { return covered(a) < covered(b); });
  Legend legend = graph.GetLegend();
  legend.left = static_cast<std::int32_t>(std::lround(best->x()));
  legend.top = static_cast<std::int32_t>(std::lround(best->y()));
  graph.SetLegend(legend);
}

void ChooseStyles(TxyGraph& graph) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    TSeries& series = graph.Series(i);
    SeriesStyle style = series.Style();
    style.connect_points = true;
    style.show_symbols = series.PointCount() <= kDensePoints;
    series.SetStyle(style);
  }
}

}  // namespace

void DefaultAppearance(TxyGraph& graph, std::string_view name) {
  graph.BeginUpdate();
  Appearance appearance = graph.GetAppearance();
  appearance.title_of_graph = name;
  appearance.show_cross_at_zero = false;
  appearance.font_for_labels = MakeFont(8, false);
  appearance.font_for_title = MakeFont(10, true);
  appearance.font_for_axes_titles = MakeFont(9, true);
  graph.SetAppearance(appearance);
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    TAxis& axis = graph.Axis(id);
    axis.SetAutoSizing(true);
    axis.SetAutoStepping(true);
    axis.SetEnableAutoTitle(true);
  }
  graph.Axis(AxisId::Y2).SetShowAxis(true);
  Dimensions dimensions = graph.GetDimensions();
  dimensions.left_margin = dimensions.right_margin = 50;
  dimensions.top_margin = dimensions.bottom_margin = 50;
  dimensions.graph_title_offset = 16;
  graph.SetDimensions(dimensions);
  Legend legend = graph.GetLegend();
  legend.border_style = 1;
  legend.layout_mode = LegendLayout::Vertical;
  legend.left = dimensions.left_margin;
  legend.top = dimensions.top_margin;
  legend.height = 24;
  legend.font = MakeFont(8, false);
  graph.SetLegend(legend);
  graph.EndUpdate();
}

void ApplyFinishedLook(TxyGraph& graph, QSizeF size, const TextMetrics& metrics,
                       const FinishedLookOptions& options) {
  graph.BeginUpdate();
  ChooseStyles(graph);
  Appearance appearance = graph.GetAppearance();
  if (!options.title.empty()) appearance.title_of_graph = options.title;
  appearance.font_for_labels = MakeFont(9, false);
  appearance.font_for_axes_titles = MakeFont(9, true);
  appearance.font_for_title = MakeFont(11, true);
  graph.SetAppearance(appearance);
  graph.Axis(AxisId::Y2).SetShowAxis(graph.AxisInUse(AxisId::Y2));
  Legend legend = graph.GetLegend();
  legend.visible = graph.SeriesCount() > 1;
  legend.font = MakeFont(9, false);
  graph.SetLegend(legend);
  graph.EndUpdate();
  Dimensions dimensions = FittingMargins(graph, size, metrics);
  LimitMargins(dimensions, size);
  graph.SetDimensions(dimensions);
  PlaceLegend(graph, size, metrics);
}

}  // namespace tarnwick
