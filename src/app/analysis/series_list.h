// The list of a graph's DataSets in dialogs. Knows graphs and lists.
#pragma once

#include <cstddef>

class QComboBox;

namespace tarnwick {

class TSeries;
class TxyGraph;

/// A new list without lines yet.
QComboBox* NewSeriesList();
/// Adds all DataSets in their order and chooses the current one.
void FillSeriesList(QComboBox& list, const TxyGraph& graph);
/// True where the list is as FillSeriesList would make it anew.
bool ListsSeriesOf(const QComboBox& list, const TxyGraph& graph);
/// A new list of all DataSets in their order, the current one chosen.
QComboBox* MakeSeriesList(const TxyGraph& graph);

/// The DataSet that a line of such a list stands for. Throws Error "DataSet Not Found!" when the graph no longer holds one
/// of that
/// name there.
TSeries& ListedSeries(TxyGraph& graph, const QComboBox& list, int line);
/// The chosen one.
TSeries& ChosenSeries(TxyGraph& graph, const QComboBox& list);

}  // namespace tarnwick
