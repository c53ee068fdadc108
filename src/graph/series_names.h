// What DataSets of a graph are called, so that each has a name of its own. Knows graphs; no computation.
#pragma once

#include <string>

namespace tarnwick {

class TxyGraph;

bool IsNameTaken(const TxyGraph& graph, const std::string& name);

/// `wanted`, and "_" and the lowest number from 1 behind it where the graph has a DataSet of that name already.
std::string FreeSeriesName(const TxyGraph& graph, const std::string& wanted);

}  // namespace tarnwick
