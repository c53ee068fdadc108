// What cutting, copying and pasting do to a graph. Knows graphs and their states; knows no clipboard and no file.
#pragma once

#include <cstddef>

#include "graph/graph_state.h"

namespace tarnwick {

class TxyGraph;

/// The graph with its current DataSet alone, without marks and inserted graphs. Throws Error "No DataSet found!".
GraphState StateOfCurrentDataSet(const TxyGraph& graph);

/// What pasting has added to a graph.
struct PastedParts {
  std::size_t data_sets = 0;
  std::size_t marks = 0;
  std::size_t graphs = 0;  ///< inserted ones
};

/// A graph that holds nothing becomes the pasted one, at its own place. Any other keeps its axes and look and gets the pasted
/// DataSets behind its own, the first of them current, the marks that it does not have yet under free IDs, and the inserted
/// graphs; a DataSet that would look like one already there takes a colour and symbol from the palette, one of a name already
/// there a number behind its own ("y_1"). Throws Error when there is nothing to add; the graph is then as it was.
PastedParts PasteGraph(TxyGraph& graph, const GraphState& pasted);

/// Inserts the pasted graph as a child at its stored place, a little aside when a child stands right there; answers its
/// index.
std::size_t PasteChild(TxyGraph& graph, const GraphState& pasted);

}  // namespace tarnwick
