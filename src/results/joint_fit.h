// One fit over several DataSets of a graph: what it takes from them and gives back. Knows graphs and fits; chooses no
// DataSet and no model.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "analysis/fits/fit_run.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// The work of each DataSet, told apart by name. The graph holds all of them.
std::vector<FitJob> PrepareJointFit(const TxyGraph& graph, std::span<const std::size_t> chosen,
                                    const FitRunOptions& options);

/// Notes in each part with which others it was fitted and what they share, gives each DataSet its part with the whole, and
/// shows it.
void ApplyJointFit(TxyGraph& graph, std::span<const std::size_t> chosen,
                   std::span<const std::string> shared, JointFit& fit);

/// What changed since the DataSet's last fit, in a sentence: of itself, or of those that were fitted with it, whose points and
/// values its share rests on, too. Empty where the result holds, and without one. The DataSet is the graph's.
std::string FitChangedText(const TxyGraph& graph, const TSeries& series);

}  // namespace tarnwick
