#include "graph/series_names.h"

#include <cstddef>

#include "graph/xy_graph.h"

namespace tarnwick {

bool IsNameTaken(const TxyGraph& graph, const std::string& name) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (graph.Series(i).SeriesName() == name) return true;
  }
  return false;
}

std::string FreeSeriesName(const TxyGraph& graph, const std::string& wanted) {
  std::string name = wanted;
  for (int number = 1; IsNameTaken(graph, name); ++number)
    name = wanted + "_" + std::to_string(number);
  return name;
}

}  // namespace tarnwick
