#include "graph/series_of_whole.h"

#include "graph/xy_graph.h"

namespace tarnwick {

std::vector<TSeries*> SeriesOfWhole(TxyGraph& graph) {
  std::vector<TSeries*> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) all.push_back(&graph.Series(i));
  for (const auto& child : graph.Children()) {
    const std::vector<TSeries*> inserted = SeriesOfWhole(*child);
    all.insert(all.end(), inserted.begin(), inserted.end());
  }
  return all;
}

}  // namespace tarnwick
