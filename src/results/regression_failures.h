// Which regression lines of a graph are missing because they could not be computed. Knows graphs; computes nothing.
#pragma once

#include <compare>
#include <string>
#include <vector>

namespace tarnwick {

class TxyGraph;

struct RegressionFailure {
  std::string data_set;
  std::string why;  ///< "Invalid Running Average limit"
  auto operator<=>(const RegressionFailure&) const = default;
};

/// Of the graph's DataSets, then of those of the graphs inserted into it.
std::vector<RegressionFailure> RegressionFailures(const TxyGraph& graph);

}  // namespace tarnwick
