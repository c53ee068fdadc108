// The list of a graph's DataSets in dialogs. Knows graphs and lists.
#pragma once

#include <cstddef>

class QComboBox;

namespace tarnwick {

class TSeries;
class TxyGraph;

/// A new list of all DataSets in their order, the current one chosen.
QComboBox* MakeSeriesList(const TxyGraph& graph);

/// The DataSet that a line of such a list stands for. Throws Error "DataSet Not Found!" when the graph no longer holds one
/// of that
/// name there.
TSeries& ListedSeries(TxyGraph& graph, const QComboBox& list, int line);
/// The chosen one.
TSeries& ChosenSeries(TxyGraph& graph, const QComboBox& list);

}  // namespace tarnwick
