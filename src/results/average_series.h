// The mean of several DataSets of a graph, as it joins that graph. Knows graphs and what is computed; asks nothing.
#pragma once

#include <cstddef>
#include <span>

#include "results/made_series.h"

namespace tarnwick {

/// "Average_" and the reference's name, and "_" and a number where the graph has that already.
std::string AverageName(const TxyGraph& graph, const TSeries& reference);

/// Computes the mean at the reference's X of the DataSets with these indices, in the graph's order, and adds it; tells what does
/// not go into it though they have it. Throws Error when there are none, or as AddMade does.
MadeSeries AddAverage(TxyGraph& graph, TSeries& reference, std::span<const std::size_t> averaged,
                      const NewSeries& wanted);

}  // namespace tarnwick
