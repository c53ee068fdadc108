#include "graph/edit/series_edit.h"

#include <algorithm>
#include <vector>

#include "graph/xy_graph.h"

namespace tarnwick {

void ReorderSeries(TxyGraph& graph, std::span<const std::size_t> order) {
  const GraphState before = graph.State();
  GraphState after = before;
  after.series.clear();
  for (const std::size_t index : order) after.series.push_back(before.series.at(index));
  const auto place_of = [&](std::int32_t index) {
    const auto found = std::ranges::find(order, static_cast<std::size_t>(index));
    return found == order.end() ? -1 : static_cast<std::int32_t>(found - order.begin());
  };
  after.appearance.current_series_index = place_of(before.appearance.current_series_index);
  after.appearance.x_axis_series_index = place_of(before.appearance.x_axis_series_index);
  graph.SetState(after);
}

SeriesStyle WithLookOf(const SeriesStyle& target, const SeriesStyle& from) {
  SeriesStyle style = from;
  style.visible = target.visible;
  style.first_axis = target.first_axis;
  style.in_panel = target.in_panel;
  style.show_in_legend = target.show_in_legend;
  style.selectable = target.selectable;
  style.line_order = target.line_order;
  style.upper_bound = target.upper_bound;
  style.lower_bound = target.lower_bound;
  style.bounds_mode = target.bounds_mode;
  style.bound_line_mode = target.bound_line_mode;
  return style;
}

}  // namespace tarnwick
