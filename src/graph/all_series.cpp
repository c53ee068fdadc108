#include "graph/all_series.h"

#include "graph/xy_graph.h"

namespace tarnwick {

std::vector<std::reference_wrapper<TSeries>> AllSeries(TxyGraph& graph) {
  std::vector<std::reference_wrapper<TSeries>> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) all.emplace_back(graph.Series(i));
  return all;
}

std::vector<std::reference_wrapper<const TSeries>> AllSeries(const TxyGraph& graph) {
  std::vector<std::reference_wrapper<const TSeries>> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) all.emplace_back(graph.Series(i));
  return all;
}

}  // namespace tarnwick
