// Every command of the program, in menu order. Knows the rows, runs nothing.
#pragma once

#include <string_view>
#include <vector>

#include "app/commands/command.h"

namespace tarnwick {

/// Pointers to the rows of all command files; they live as long as the program.
const std::vector<const Command*>& CommandTable();

/// The command of that action name; null when there is none.
const Command* FindCommand(std::string_view name);

}  // namespace tarnwick
