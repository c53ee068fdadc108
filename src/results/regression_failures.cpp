#include "results/regression_failures.h"

#include "graph/xy_graph.h"

namespace tarnwick {

std::vector<RegressionFailure> RegressionFailures(const TxyGraph& graph) {
  std::vector<RegressionFailure> failures;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
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
