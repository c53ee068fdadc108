// What a feature hands the shell: rows of commands, panels, bars and settings, lists in menus, kinds of files it takes. The main
// window is made from a list of these and knows nothing else of a feature.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desk/commands/command.h"
#include "desk/commands/menu_list.h"
#include "desk/panels/panel.h"
#include "desk/settings/setting.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {

class Document;
class Prompt;

/// A bar over every graph: it follows the document and shows itself when it has something to say. All outlive it.
using BarMaker = QWidget* (*)(Document& document, Prompt& prompt, QWidget* parent);

/// A kind of file that opens no window but goes into the document that is looked at.
struct TakenFile {
  FileHolds holds = FileHolds::FitFunction;
  /// What is told of "name.ext" when no document is open: "is a ..."
  std::string_view without_document = {};
  void (*take)(Document& document, const std::filesystem::path& path) = nullptr;  ///< throws Error
};

/// All rows live as long as the program. Commands of one group of a menu, and of the tool bar, stand in the order of
/// features and rows.
struct Feature {
  std::string_view name;  ///< of its folder
  std::vector<std::span<const Command>> commands = {};
  std::span<const PanelRow> panels = {};
  std::span<const BarMaker> bars = {};
  std::span<const SettingRow> settings = {};
  std::vector<MenuList> lists = {};
  std::span<const TakenFile> files = {};
  /// Runs once, when the main window is made; `context` is good as long as that lives.
  void (*begin)(QWidget& window, std::function<CommandContext()> context) = nullptr;
};

std::vector<const Command*> CommandsOf(const std::vector<Feature>& features);
std::vector<const PanelRow*> PanelsOf(const std::vector<Feature>& features);
std::vector<BarMaker> BarsOf(const std::vector<Feature>& features);
/// Who takes the kind of file that a path means; null when no feature does.
const TakenFile* TakerOf(const std::vector<Feature>& features, const std::filesystem::path& path);

}  // namespace tarnwick
