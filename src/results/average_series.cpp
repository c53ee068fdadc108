#include "results/average_series.h"

#include <utility>

#include "graph/series_names.h"
#include "graph/xy_graph.h"
#include "results/tools/tool_table.h"

namespace tarnwick {

std::string AverageName(const TxyGraph& graph, const TSeries& reference) {
  return FreeSeriesName(graph, "Average_" + reference.SeriesName());
}

MadeSeries AddAverage(TxyGraph& graph, TSeries& reference, std::span<const std::size_t> averaged,
                      const NewSeries& wanted) {
  ToolInput input{{&reference}, ToolSettings(kAverageTool.settings)};
  for (const std::size_t index : averaged) input.series.push_back(&graph.Series(index));
  MadeSeries made = AddMade(graph, kAverageTool, std::move(input), wanted);
  NameInLegend(graph);
  return made;
}

}  // namespace tarnwick
