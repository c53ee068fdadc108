// The rows of the feature view, a function for each file of commands.
#pragma once

#include <span>

#include "desk/commands/command.h"

namespace tarnwick {

std::span<const Command> ViewCommands();
std::span<const Command> LegendCommands();

}  // namespace tarnwick
