#include "graph/series_names.h"

#include <algorithm>

#include "graph/all_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {

bool IsNameTaken(const TxyGraph& graph, const std::string& name) {
  return std::ranges::any_of(AllSeries(graph),
                             [&](const TSeries& series) { return series.SeriesName() == name; });
}

std::string FreeSeriesName(const TxyGraph& graph, const std::string& wanted) {
  std::string name = wanted;
  for (int number = 1; IsNameTaken(graph, name); ++number)
    name = wanted + "_" + std::to_string(number);
  return name;
}

}  // namespace tarnwick
