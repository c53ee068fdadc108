// The Window menu's commands.
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "desk/commands/command.h"

namespace tarnwick {
namespace {

template <WindowArrangement kArrangement>
void Arrange(CommandContext& context) {
  context.workspace.Arrange(kArrangement);
}

}  // namespace

std::span<const Command> WindowCommands() {
  static constexpr Command kRows[] = {
      {"WindowCascade1", "&Cascade", "", "Cascade", "cascade", Menu::Window, 0, ToolGroup::None,
       HasDocument, Arrange<WindowArrangement::Cascade>},
      {"WindowTileHorizontal1", "Tile &Horizontally", "", "Tile Horizontally", "tile-horizontal",
       Menu::Window, 0, ToolGroup::None, HasDocument, Arrange<WindowArrangement::TileHorizontally>},
      {"WindowTileVertical1", "Tile &Vertically", "", "Tile Vertically", "tile-vertical",
       Menu::Window, 0, ToolGroup::None, HasDocument, Arrange<WindowArrangement::TileVertically>},
      {"WindowMinimizeAll1", "&Minimize All", "", "Minimize Al|Minimize all Graphs to Icons ",
       "minimize-all", Menu::Window, 1, ToolGroup::None, HasDocument,
       Arrange<WindowArrangement::MinimizeAll>},
      {"WindowArrangeAll1", "Arrange &Icons", "", "Arrange All|Arranges all Icons ",
       "arrange-icons", Menu::Window, 1, ToolGroup::None, HasDocument,
       Arrange<WindowArrangement::ArrangeIcons>},
  };
  return kRows;
}

}  // namespace tarnwick
