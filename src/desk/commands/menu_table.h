// Where each menu hangs and what it is called. Knows captions and order only.
#pragma once

#include <span>
#include <string_view>

#include "desk/commands/command.h"

namespace tarnwick {

struct MenuRow {
  Menu menu;
  std::string_view caption;
  Menu parent = Menu::None;  ///< None: on the menu bar
  int group = 0;             ///< of the parent's entries, behind the commands of that group
};

/// Every menu, in the order of the menu bar, a submenu after its parent.
std::span<const MenuRow> MenuTable();

}  // namespace tarnwick
