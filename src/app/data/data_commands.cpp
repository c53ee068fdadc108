// The Data menu's commands.
#include "app/window/command_table.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"

namespace tarnwick {

std::span<const Command> DataCommands() {
  static constexpr Command kRows[] = {
      {"editRefresh1", "&Current Window", "F5",
       "Refresh Data|Refresh DataSets from External Sources", "refresh", Menu::RefreshData, 0,
       ToolGroup::Data, HasDocument, [](CommandContext& c) { c.document->Files().Refresh(); }},
  };
  return kRows;
}

}  // namespace tarnwick
