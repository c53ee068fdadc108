// Reads the bytes of a graph file, which may be damaged, into a graph's state. Knows the layout; opens no file and makes
// no graph.
#pragma once

#include <string_view>

#include "graph/graph_state.h"

namespace tarnwick {

/// The state that a graph file's bytes hold, without a regression curve. What is allocated grows with the bytes, not with
/// the counts they claim. Throws FileError as DecodeGraph says.
GraphState ReadGraphState(std::string_view bytes, std::string_view file_name);

}  // namespace tarnwick
