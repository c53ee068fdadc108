// Edits of the list of DataSets and of their looks. Knows graphs and styles; asks nothing.
#pragma once

#include <cstddef>
#include <span>

#include "graph/series_style.h"

namespace tarnwick {

class TxyGraph;

/// Draws the DataSets in another order: `order` names each by its present index, once. The current DataSet stays current.
void ReorderSeries(TxyGraph& graph, std::span<const std::size_t> order);

/// `target` with the lines, symbols and colours of `from`; what the DataSet means, its axis and whether it is shown stay.
SeriesStyle WithLookOf(const SeriesStyle& target, const SeriesStyle& from);

}  // namespace tarnwick
