// The mean of several DataSets of a graph, as it joins that graph. Knows graphs and what is computed; asks nothing.
#pragma once

#include <cstddef>
#include <span>

#include "results/new_series.h"

namespace tarnwick {

/// "Average_" and the reference's name, and "_" and a number where the graph has that already.
std::string AverageName(const TxyGraph& graph, const TSeries& reference);

/// Computes the mean at the reference's X of the DataSets with these indices, in the graph's order, and adds it. Throws
/// Error when
/// there are none, or as AddNewSeries does.
TSeries& AddAverage(TxyGraph& graph, const TSeries& reference,
                    std::span<const std::size_t> averaged, const NewSeries& wanted);

/// What does not go into the mean of these DataSets though they have it, a sentence; empty where nothing is left out.
std::string AverageText(const TxyGraph& graph, std::span<const std::size_t> averaged);

}  // namespace tarnwick
