// What of a graph's picture lies under a place, for those who want to change it. Knows layout and graph.
#pragma once

#include <QPointF>

#include "graph/graph_part.h"

namespace tarnwick {

struct PlotLayout;
class TxyGraph;

/// The topmost part within a few pixels; the graph itself where there is none. `layout` is the graph's.
GraphPart PartAt(const TxyGraph& graph, const PlotLayout& layout, QPointF place);

}  // namespace tarnwick
