#include "results/derived_series.h"

#include "graph/graph_update.h"
#include "graph/xy_graph.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

const Tool& ToolOf(DerivedKind kind) {
  switch (kind) {
    case DerivedKind::Integral:
      return kIntegrateTool;
    case DerivedKind::RunningSum:
      return kSumTool;
    case DerivedKind::Histogram:
      return kHistogramTool;
    case DerivedKind::Derivative:
      break;
  }
  return kDifferentiateTool;
}

}  // namespace

bool HidesSource(DerivedKind kind) {
  return kind != DerivedKind::Derivative;
}

std::string DerivedName(const TxyGraph& graph, const TSeries& source, DerivedKind kind) {
  return MadeName(graph, source, ToolOf(kind));
}

MadeSeries AddDerived(TxyGraph& graph, TSeries& source, DerivedKind kind,
                      const DerivedOptions& options) {
  const Tool& tool = ToolOf(kind);
  ToolInput input{{&source}, ToolSettings(tool.settings)};
  if (kind == DerivedKind::Histogram) input.settings.Set(0, options.bins);
  const GraphUpdate update(graph);
  MadeSeries made = AddMade(
      graph, tool, std::move(input),
      {options.name.empty() ? DerivedName(graph, source, kind) : options.name, options.y_axis});
  if (options.source == SourceAfter::Hidden) HideSource(graph, source, made.series, tool.x);
  NameInLegend(graph);
  return made;
}

}  // namespace tarnwick
