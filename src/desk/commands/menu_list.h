// Entries at the end of a menu that stand for what is found when it opens: recent files, windows, functions. Knows captions
// and what an entry does, no menu.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "desk/commands/command.h"

class QFontMetrics;

namespace tarnwick {

struct MenuItem {
  QString caption;                             ///< with its mnemonic
  QString hint;                                ///< for the status bar
  std::optional<bool> checked = std::nullopt;  ///< nothing: the entry has no check mark
  bool enabled = true;
  std::function<void(CommandContext&)> run;  ///< may throw Error
};

struct MenuList {
  Menu menu = Menu::None;
  /// The entries as they now are, behind a separator; the metrics are the menu's (numbered_caption.h).
  std::function<std::vector<MenuItem>(const CommandContext&, const QFontMetrics&)> items;
};

}  // namespace tarnwick
