#include "graph/layout/automatic_legend.h"

#include <algorithm>
#include <tuple>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/legend_place.h"
#include "graph/layout/plot_layout.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// In a picture narrower than this there is no room for what is said twice.
constexpr double kSmallPicture = 400;

/// True when each of two DataSets has a Y axis of its own, whose title names it in its colour.
bool TitlesNameAll(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  if (graph.SeriesCount() != 2 || YAxisOf(graph.Series(0)) == YAxisOf(graph.Series(1)))
    return false;
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  const auto titled = [&](AxisId id) {
    return layout.Axis(id).title && graph.Axis(id).Look().EnableAutoTitle;
  };
  return titled(AxisId::Y) && titled(AxisId::Y2);
}

void GiveRoomBack(TxyGraph& graph) {
  const Legend& legend = graph.GetLegend();
  Dimensions dimensions = graph.GetDimensions();
  const auto give = [](std::int32_t& margin, std::int32_t room) {
    margin = std::max(margin - room, 0);
  };
  give(dimensions.right_margin, legend.room_beside);
  give(dimensions.top_margin, legend.room_above);
  give(dimensions.graph_title_offset, legend.room_above);
  graph.SetDimensions(dimensions);
}

}  // namespace

void PlaceAutomatically(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  graph.BeginUpdate();
  GiveRoomBack(graph);
  const bool wanted = graph.GetLegend().visible || graph.GetLegend().no_room;
  Legend legend = ChosenByHand(graph.GetLegend());
  legend.layout_mode = LegendLayout::Vertical;
  legend.width = 0;
  legend.visible = wanted;
  graph.SetLegend(legend);
  if (size.width() < kSmallPicture && TitlesNameAll(graph, size, metrics)) {
    legend.visible = false;
    graph.SetLegend(legend);
  }
  const Dimensions before = graph.GetDimensions();
  PlaceLegend(graph, size, metrics);
  legend = graph.GetLegend();
  legend.automatic = true;
  legend.room_beside = graph.GetDimensions().right_margin - before.right_margin;
  legend.room_above = graph.GetDimensions().top_margin - before.top_margin;
  legend.no_room = wanted && !legend.visible;
  graph.SetLegend(legend);
  graph.EndUpdate();
}

void SettleLegend(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  if (graph.GetLegend().automatic) PlaceAutomatically(graph, size, metrics);
}

bool AutomaticLegendHides(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  return graph.GetLegend().automatic && LegendHides(graph, size, metrics);
}

Legend ChosenByHand(Legend legend) {
  legend.automatic = legend.no_room = false;
  legend.room_beside = legend.room_above = 0;
  return legend;
}

bool StandsOtherwise(const Legend& one, const Legend& other) {
  const auto place = [](const Legend& legend) {
    return std::tuple(legend.layout_mode, legend.top, legend.left, legend.width, legend.height);
  };
  return one.visible != other.visible || place(one) != place(other);
}

}  // namespace tarnwick
