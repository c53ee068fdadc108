// A DataSet whose points are still to come, as a graph takes it in. Knows graphs and descriptions; brings no points.
#pragma once

#include <string>

#include "data/ds_info.h"
#include "graph/files/x_meaning.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// Adds an empty DataSet with that source. Of equal X every point is kept; an axis of the first DataSet shows moments as such.
TSeries& AddWaitingSeries(TxyGraph& graph, const TDSInfo& source, const std::string& name,
                          XMeaning x);

}  // namespace tarnwick
