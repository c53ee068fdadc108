// The batch command of any tool that makes a DataSet, made from the tool's row.
#pragma once

#include "cli/options/command.h"
#include "results/tools/tool_table.h"

namespace tarnwick::cli {

void DeclareToolCommand(const Tool& tool, Command& command, Action& action);

template <const Tool& kTool>
void DeclareTool(Command& command, Action& action) {
  DeclareToolCommand(kTool, command, action);
}

}  // namespace tarnwick::cli
