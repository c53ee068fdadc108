#include "graph/layout/finished_look.h"

#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "graph/all_series.h"
#include "graph/axes/plot_metrics.h"
#include "graph/belonging.h"
#include "graph/layout/automatic_legend.h"
#include "graph/layout/plot_layout.h"
#include "graph/layout/second_quantity.h"
#include "graph/palette.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kEdge = 8;                     // pixels kept free around everything
constexpr std::int32_t kSparsePoints = 80;   // up to these have symbols of their usual size
constexpr std::int32_t kDensePoints = 300;   // up to these have small ones, more are a line
constexpr std::int32_t kBroadPoints = 2000;  // up to these such a line is two pixels wide
constexpr std::int32_t kSmallSymbol = 4;     // pixels across
constexpr std::int64_t kMostSymbols =
    2400;  // in a picture, beyond which only lines can be told apart

Font MakeFont(int size, bool bold) {
  Font font;
  font.size = size;
  font.bold = bold;
  return font;
}

/// Largest share of the picture that the two margins of one direction may take.
constexpr double kLargestMarginShare = 0.6;

/// The box around all labels and titles of the axes, and the plot.
QRectF ContentOf(const PlotLayout& layout) {
  QRectF content = layout.panel ? layout.plot.united(layout.panel->plot) : layout.plot;
  for (const AxisLayout* axis : layout.ShownAxes()) {
    for (const PlacedText& label : axis->labels) content = content.united(label.Box());
    if (axis->title) {
      QRectF title = axis->title->Box();
      // One beside the plot may be longer than that is high, which asks for no margin.
      if (axis->title->angle != 0)
        title.setTop(layout.plot.top()), title.setBottom(layout.plot.bottom());
      content = content.united(title);
    }
    if (axis->factor) content = content.united(axis->factor->Box());
  }
  return content;
}

int RoundedUp(double pixels) {
  return static_cast<int>(std::ceil(pixels));
}

/// Margins as wide as their contents: measured on layouts with room for everything, first the sides, then, with the
/// sides in place, what stands below.
Dimensions FittingMargins(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  constexpr double kAmpleShare = 0.28;
  constexpr double kSlack = 0.5;  // pixels
  Dimensions margins = graph.GetDimensions();
  margins.left_margin = margins.right_margin = static_cast<int>(size.width() * kAmpleShare);
  margins.top_margin = margins.bottom_margin = static_cast<int>(size.height() * kAmpleShare);
  for (const bool sides : {true, false}) {
    graph.SetDimensions(margins);
    const PlotLayout layout = LayoutPlot(graph, size, metrics);
    if (!layout.has_scales) return Dimensions{};
    const QRectF content = ContentOf(layout);
    if (sides) {
      margins.left_margin = kEdge + RoundedUp(layout.plot.left() - content.left());
      margins.right_margin = 2 * kEdge + RoundedUp(content.right() - layout.plot.right());
    } else {
      margins.bottom_margin =
          kEdge +
          RoundedUp(content.bottom() - (layout.panel ? layout.panel->plot : layout.plot).bottom());
    }
  }
  // A wider plot may have labels at its very ends that the narrow one had no room for: they stand at their ticks, too.
  constexpr int kRounds = 8;
  for (int round = 0; round < kRounds; ++round) {
    graph.SetDimensions(margins);
    const QRectF content = ContentOf(LayoutPlot(graph, size, metrics));
    const int left = std::max(RoundedUp(kEdge - content.left() - kSlack), 0);
    const int right = std::max(RoundedUp(content.right() + kEdge - size.width() - kSlack), 0);
    if (left == 0 && right == 0) break;
    margins.left_margin += left;
    margins.right_margin += right;
  }
  const auto has_factor = [&](AxisId id) {
    return LayoutPlot(graph, size, metrics).Axis(id).factor.has_value();
  };
  const bool above = has_factor(AxisId::Y) || has_factor(AxisId::Y2);
  const Appearance& appearance = graph.GetAppearance();
  const double factor = above ? metrics.LineHeight(appearance.font_for_labels) + kEdge / 2.0 : 0;
  const double title = metrics.LineHeight(appearance.font_for_title);
  margins.graph_title_offset = kEdge + RoundedUp(title / 2 + factor);
  margins.top_margin = 2 * kEdge + RoundedUp(factor);
  if (!appearance.title_of_graph.empty()) margins.top_margin += RoundedUp(title);
  return margins;
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

/// Lines of one colour, without symbols, are told apart by their styles.
LineStyle StyleOfRound(std::size_t series) {
  constexpr std::array kStyles = {LineStyle::Solid, LineStyle::Dash, LineStyle::DashDot,
                                  LineStyle::Dot, LineStyle::DashDotDot};
  return kStyles[series / kPaletteSize % kStyles.size()];
}

bool HasSeveralToName(const TxyGraph& graph) {
  const auto is_named = [](const TSeries& series) { return series.Style().show_in_legend != 0; };
  return std::ranges::count_if(AllSeries(graph), is_named) > 1;
}

/// How many points each DataSet is drawn as one of: the runs of a column look as the longest of them.
std::vector<std::int32_t> PointsToLookAs(const TxyGraph& graph) {
  std::vector<std::size_t> group_of;
  std::vector<std::pair<const TSeries*, std::int32_t>> groups;  // by their first
  for (const TSeries& series : AllSeries(graph)) {
    const auto same = std::ranges::find_if(
        groups, [&](const auto& group) { return AreOfOneColumn(*group.first, series); });
    group_of.push_back(static_cast<std::size_t>(same - groups.begin()));
    if (same == groups.end()) {
      groups.emplace_back(&series, series.PointCount());
    } else {
      same->second = std::max(same->second, series.PointCount());
    }
  }
  std::vector<std::int32_t> points;
  points.reserve(group_of.size());
  for (const std::size_t group : group_of) points.push_back(groups[group].second);
  return points;
}

void ChooseStyles(TxyGraph& graph) {
  const std::vector<std::int32_t> look_as = PointsToLookAs(graph);
  std::int64_t symbols = 0;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i)
    if (look_as[i] <= kDensePoints) symbols += graph.Series(i).PointCount();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    TSeries& series = graph.Series(i);
    if (BelongsToAnother(series)) continue;
    SeriesStyle style = series.Style();
    const bool few = look_as[i] <= kDensePoints && symbols <= kMostSymbols;
    style.show_symbols = !style.connect_points || few;
    if (look_as[i] > kSparsePoints) style.symbol_size = kSmallSymbol;
    style.line_style = style.show_symbols ? LineStyle::Solid : StyleOfRound(i);
    style.line_width = !style.show_symbols && look_as[i] <= kBroadPoints ? 2 : 1;
    series.SetStyle(style);
  }
}

}  // namespace

bool LooksOtherwise(std::int32_t before, std::int32_t now) {
  constexpr std::int32_t kMost[] = {0, kSparsePoints, kDensePoints, kBroadPoints};
  return std::ranges::any_of(kMost,
                             [&](std::int32_t most) { return (before <= most) != (now <= most); });
}

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
    SetLook(axis, &AxisLook::EnableAutoTitle, true);
  }
  SetLook(graph.Axis(AxisId::Y2), &AxisLook::ShowAxis, true);
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
  TAxis& second = graph.Axis(AxisId::Y2);
  SetLook(second, &AxisLook::ShowAxis, AxisInUse(graph, AxisId::Y2));
  second.SetAutoSizing(true);
  second.SetAdjustDecPlaces(true);
  SetLook(second, &AxisLook::EnableAutoTitle, true);
  Legend legend = ChosenByHand(graph.GetLegend());  // margins are found without its room
  legend.visible = HasSeveralToName(graph);
  legend.layout_mode = LegendLayout::Vertical;
  legend.font = MakeFont(9, false);
  graph.SetLegend(legend);
  graph.EndUpdate();
  Dimensions dimensions = FittingMargins(graph, size, metrics);
  LimitMargins(dimensions, size);
  graph.SetDimensions(dimensions);
  PlaceAutomatically(graph, size, metrics);
}

}  // namespace tarnwick
