// The rows of the feature edit, a function for each file of commands.
#pragma once

#include <span>

#include "desk/commands/command.h"

namespace tarnwick {

std::span<const Command> EditCommands();
std::span<const Command> ClipboardCommands();
std::span<const Command> InsertCommands();

}  // namespace tarnwick
