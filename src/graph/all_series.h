// The DataSets of a graph, for loops over them. Knows their order only.
#pragma once

#include <functional>
#include <vector>

namespace tarnwick {

class TSeries;
class TxyGraph;

/// The graph's own DataSets in their order, without those of inserted graphs. Valid until one comes or goes.
std::vector<std::reference_wrapper<TSeries>> AllSeries(TxyGraph& graph);
std::vector<std::reference_wrapper<const TSeries>> AllSeries(const TxyGraph& graph);

}  // namespace tarnwick
