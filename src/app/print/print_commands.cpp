// The File menu's commands about paper.
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"

namespace tarnwick {

std::span<const Command> PrintCommands() {
  static constexpr Command kRows[] = {
      {"FilePrint1", "&Print", "Ctrl+P", "Print|Print Current Window", "print", Menu::File, 4,
       ToolGroup::File, HasDocument, [](CommandContext& c) { c.workspace.Print(*c.document); }},
      {"FilePrnSetup1", "Printer Set&up", "",
       "Printer Setup|Choose Paper, Orientation and Margins for Printing", "print-setup",
       Menu::File, 4, ToolGroup::None, nullptr,
       [](CommandContext& c) { c.workspace.SetUpPrinter(); }},
  };
  return kRows;
}

}  // namespace tarnwick
