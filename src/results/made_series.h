// DataSets that tools make of a graph's own, as they join it and as they are computed anew. Knows graphs and tools; asks nothing.
#pragma once

#include <string>

#include "results/new_series.h"
#include "results/tools/tool.h"

namespace tarnwick {

/// A DataSet that was added, or the source where its own base line does for it, and what is told of it: sentences.
struct MadeSeries {
  TSeries& series;
  std::string told;
};

/// The source's name with the tool's suffix, and "_" and the lowest number from 1 where the graph has that already.
std::string MadeName(const TxyGraph& graph, const TSeries& source, const Tool& tool);

/// Computes a DataSet from others that the graph holds and adds it, with how it was made; or sets the source's base line, where
/// that is what came of it. Throws Error as the tool and
/// AddNewSeries do; the graph is then as it was.
MadeSeries AddMade(TxyGraph& graph, const Tool& tool, ToolInput input, const NewSeries& wanted);

/// Draws a source no longer. Where what was made of it has an X of its own the X axis goes by that: it has its title, fits its
/// scale, and shows no dates; bands and parts of models over the X before are drawn no longer, too.
void HideSource(TxyGraph& graph, TSeries& source, const TSeries& made, ResultX x);

/// Shows the legend where one DataSet was drawn and now there are two to be told apart.
void NameInLegend(TxyGraph& graph);

/// What came of computing anew.
struct Recomputed {
  std::size_t count = 0;  ///< DataSets
  std::string told;       ///< sentences on those that stay as they were; empty for none
};

/// Computes every DataSet anew that was computed from others of the graph, those first that others were made from; they keep
/// their name and look. Names and settings are those that were stored.
Recomputed RecomputeAll(TxyGraph& graph);

/// Whether the points of one were computed from others.
bool HasMadeSeries(const TxyGraph& graph);

}  // namespace tarnwick
