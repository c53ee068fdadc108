// What cutting, copying and pasting do to a graph. Knows graphs and their states; knows no clipboard and no file.
#pragma once

#include <cstddef>

#include "graph/graph_state.h"

namespace tarnwick {

class TxyGraph;

/// The graph with its current DataSet alone, without marks and inserted graphs. Throws Error "No DataSet found!".
GraphState StateOfCurrentDataSet(const TxyGraph& graph);

/// A graph that holds nothing becomes the pasted one, at its own place. Any other gets the pasted DataSets behind its own, the
/// first of them current; one that would look like a DataSet already there takes a colour and symbol from the palette.
/// Throws Error when there is no DataSet to add; the graph is then as it was.
void PasteGraph(TxyGraph& graph, const GraphState& pasted);

/// Inserts the pasted graph as a child at its stored place, a little aside when a child stands right there; answers its
/// index.
std::size_t PasteChild(TxyGraph& graph, const GraphState& pasted);

}  // namespace tarnwick
