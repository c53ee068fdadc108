// The Help menu's commands.
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "desk/commands/command.h"

namespace tarnwick {

std::span<const Command> HelpCommands() {
  static constexpr Command kRows[] = {
      {"HelpAbout1", "&About...", "",
       "About|Displays program information, version number, and copyright", "about", Menu::Help, 0,
       ToolGroup::None, nullptr, [](CommandContext& c) { c.workspace.ShowAbout(); }},
  };
  return kRows;
}

}  // namespace tarnwick
