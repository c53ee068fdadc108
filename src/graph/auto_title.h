// What an axis is called by the data that are drawn against it. Knows DataSets and their columns; nothing of layouts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/axes/axis.h"

namespace tarnwick {

class TxyGraph;

/// The title of a Y axis with more columns than it names: the legend tells them.
inline constexpr std::string_view kManyNamesTitle = "value";

/// The columns that are drawn against a Y axis, each once, in order of drawing; one more than a title names at most.
std::vector<std::string> NamesOnAxis(const TxyGraph& graph, AxisId id);

/// Of X that of the DataSet that gives it, of a Y axis those of up to three columns, else kManyNamesTitle. Empty where no data
/// tell.
std::string AutoTitle(const TxyGraph& graph, AxisId id);

}  // namespace tarnwick
