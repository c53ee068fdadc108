#include "app/window/command_table.h"

#include <algorithm>

namespace tarnwick {

const std::vector<const Command*>& CommandTable() {
  static const std::vector<const Command*> kTable = [] {
    std::vector<const Command*> table;
    for (const auto rows :
         {FileCommands(), EditCommands(), ClipboardCommands(), PrintCommands(), ModeCommands(),
          WindowCommands(), ViewCommands(), LegendCommands(), MarkCommands(), InsertCommands(),
          DataCommands(), FitCommands(), HelpCommands()}) {
      for (const Command& row : rows) table.push_back(&row);
    }
    return table;
  }();
  return kTable;
}

const Command* FindCommand(std::string_view name) {
  const auto& table = CommandTable();
  const auto found = std::find_if(table.begin(), table.end(),
                                  [&](const Command* command) { return command->name == name; });
  return found == table.end() ? nullptr : *found;
}

}  // namespace tarnwick
