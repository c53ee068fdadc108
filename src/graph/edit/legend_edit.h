// Edits of a graph's legend as a whole. Knows the layout, because what was placed freely begins where it stood.
#pragma once

#include "graph/appearance.h"

namespace tarnwick {

class TextMetrics;
class TxyGraph;

/// The standard legend: shown, with a border, its entries below each other, at the plot's top left corner.
void ResetLegend(TxyGraph& graph);

/// Vertical: as large as its entries, below each other. Horizontal: beside each other, as wide as the picture lets it.
/// Free: a box of its own size, at first as large as its entries below each other.
void SetLegendLayout(TxyGraph& graph, LegendLayout mode, const TextMetrics& metrics);

}  // namespace tarnwick
