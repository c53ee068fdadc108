// The DataSets of a graph and of all graphs inserted into it as one list. Knows their order only.
#pragma once

#include <vector>

namespace tarnwick {

class TSeries;
class TxyGraph;

/// The graph's own DataSets, then those of its inserted graphs in their order, each with what is inserted into it. Valid until
/// a DataSet or an inserted graph comes or goes; graphs of equal states have equal lists.
std::vector<TSeries*> SeriesOfWhole(TxyGraph& graph);

}  // namespace tarnwick
