// What a graph shows of a DataSet's fit beside its curve, which stays as it is when the fit holds no more, until the next one.
// Knows graphs; runs no fit.
#pragma once

#include <string>

namespace tarnwick {

class TSeries;
class TxyGraph;

/// "The bands and printed values on the graph are of this fit, too."; empty where there are none.
std::string LeftoverText(const TxyGraph& graph, const TSeries& series);

/// 'The bands and printed values on the graph are of a fit of "y" that holds no more.'; empty where there are none, or it holds.
std::string OutdatedText(const TxyGraph& graph, const TSeries& series);

/// Makes them anew of the DataSet's present fit, where that can: bands at their levels, printed lines where they stand.
/// Without a fit that holds they stay. The graph holds `series`.
void RenewLeftovers(TxyGraph& graph, const TSeries& series);

}  // namespace tarnwick
