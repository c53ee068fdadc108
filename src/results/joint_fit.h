// One fit over several DataSets of a graph: what it takes from them and gives back. Knows graphs and fits; chooses no
// DataSet and no model.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "analysis/fit_run.h"

namespace tarnwick {

class TxyGraph;

/// The work of each DataSet, told apart by name. The graph holds all of them.
std::vector<FitJob> PrepareJointFit(const TxyGraph& graph, std::span<const std::size_t> chosen,
                                    const FitRunOptions& options);

/// Gives each DataSet its part of the fit, and shows it.
void ApplyJointFit(TxyGraph& graph, std::span<const std::size_t> chosen, const JointFit& fit);

}  // namespace tarnwick
