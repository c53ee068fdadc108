// The colours by which fits of several DataSets are told apart. Knows graphs and models; runs no fit.
#pragma once

namespace tarnwick {

class TxyGraph;

/// Where the models of several DataSets are shown, gives each curve that nobody coloured, its bands and printed parameters, the
/// colour of its DataSet, darker (lighter, where that is nearly black).
void ColourFitsByDataSet(TxyGraph& graph);

}  // namespace tarnwick
