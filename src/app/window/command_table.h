// Every command of the program, in menu order. Knows the rows, runs nothing.
#pragma once

#include <string_view>
#include <vector>

#include "desk/commands/command.h"

namespace tarnwick {

// The rows, one function for each file of commands.
std::span<const Command> FileCommands();
std::span<const Command> EditCommands();
std::span<const Command> ModeCommands();
std::span<const Command> ClipboardCommands();
std::span<const Command> PrintCommands();
std::span<const Command> WindowCommands();
std::span<const Command> ViewCommands();
std::span<const Command> LegendCommands();
std::span<const Command> MarkCommands();
std::span<const Command> InsertCommands();
std::span<const Command> DataCommands();
std::span<const Command> FitCommands();
std::span<const Command> HelpCommands();

/// Pointers to the rows of all command files; they live as long as the program.
const std::vector<const Command*>& CommandTable();

/// The command of that action name; null when there is none.
const Command* FindCommand(std::string_view name);

}  // namespace tarnwick
