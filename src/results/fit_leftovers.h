// What a graph shows of a DataSet's fit beside its curve, which stays as it is when the fit holds no more. Knows graphs; runs no
// fit.
#pragma once

#include <string>

namespace tarnwick {

class TSeries;
class TxyGraph;

/// "The bands and printed values on the graph are of this fit, too."; empty where there are none.
std::string LeftoverText(const TxyGraph& graph, const TSeries& series);

}  // namespace tarnwick
