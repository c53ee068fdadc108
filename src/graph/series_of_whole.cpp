#include "graph/series_of_whole.h"

#include "graph/all_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::vector<TSeries*> SeriesOfWhole(TxyGraph& graph) {
  std::vector<TSeries*> all;
  for (TSeries& series : AllSeries(graph)) all.push_back(&series);
  for (const auto& child : graph.Children()) {
    const std::vector<TSeries*> inserted = SeriesOfWhole(*child);
    all.insert(all.end(), inserted.begin(), inserted.end());
  }
  return all;
}

}  // namespace tarnwick
