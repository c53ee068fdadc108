// DataSets that a fit adds to its graph: what the model leaves, and how sure its curve is. Made again, they take the place and
// the look of what was made before. Knows graphs and models; runs no fit.
#pragma once

#include <string>
#include <vector>

#include "base/color.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// "Residuals of X" for the DataSet X.
std::string ResidualsName(const TSeries& source);

/// Adds Y less model, of every point between the margins, as a DataSet in the panel under the plot. The graph holds `source`.
/// Throws Error, also when the model has no expression; the graph is then as it was.
TSeries& AddResiduals(TxyGraph& graph, const TSeries& source, const std::string& name);

/// Whether the graph has what AddResiduals makes of this DataSet, and at which levels what AddBands does.
bool HasResiduals(const TxyGraph& graph, const TSeries& source);
std::vector<double> BandLevels(const TxyGraph& graph, const TSeries& source);

/// Adds confidence and prediction bands of the DataSet's fit as four DataSets; `level` lies between 0 and 1. The graph holds
/// `source`. Throws Error, also when the model has no result that holds; the graph is then as it was.
void AddBands(TxyGraph& graph, const TSeries& source, double level);

/// Gives the bands of the DataSet that have the colour `before` that of its model's curve.
void RecolourBands(TxyGraph& graph, const TSeries& source, Color before);

}  // namespace tarnwick
