#include "results/regression_failures.h"

#include "graph/all_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::vector<RegressionFailure> RegressionFailures(const TxyGraph& graph) {
  std::vector<RegressionFailure> failures;
  for (const TSeries& series : AllSeries(graph)) {
    if (!series.Regression().failure.empty())
      failures.push_back({series.SeriesName(), series.Regression().failure});
  }
  for (const auto& child : graph.Children()) {
    for (RegressionFailure& failure : RegressionFailures(*child))
      failures.push_back(std::move(failure));
  }
  return failures;
}

}  // namespace tarnwick
