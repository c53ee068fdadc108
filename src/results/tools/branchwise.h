// A tool on a DataSet whose line turns back or is broken: branch by branch, piece by piece, as the tool asks for it, and the
// parts put together along the line. Knows DataSets and tools; no graph.
#pragma once

#include "results/tools/tool.h"

namespace tarnwick {

/// What the tool computes, with a sentence on how it took the line where that is not plain. DataSets beside the source that turn
/// back have to have the same branches as it, where it is taken by branches. Throws Error as the tool does.
Computed ComputeAlongLine(const Tool& tool, const ToolInput& input);

}  // namespace tarnwick
