// One user command as a row of data: menus, tool bar, tool tips, help and tests are made from these rows. Knows what a
// command works with, never the main window.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "desk/commands/mode_host.h"

class QWidget;

namespace tarnwick {

class Document;
class FileChooser;
class KeptState;
class PanelHost;
class Prompt;
class Settings;
class Workspace;
struct ProgramPaths;

/// What a command works with, made afresh for each run.
struct CommandContext {
  Workspace& workspace;
  Prompt& prompt;
  FileChooser& chooser;
  PanelHost& panels;
  Settings& settings;
  KeptState& kept;
  const ProgramPaths& paths;
  QWidget* dialog_parent = nullptr;
  Document* document = nullptr;  ///< of the active graph window; null without one
  ModeHost* modes = nullptr;     ///< of the active graph window; null without one
};

/// Menus and submenus in the order of the menu bar; menu_table.cpp says where each one hangs. None: no menu entry.
enum class Menu : std::uint8_t {
  None,
  File,
  Edit,
  Window,
  View,
  Legend,
  Zoom,
  Data,
  RefreshData,
  XAxisShift,
  CurveFitting,
  Mark,
  Insert,
  Analysis,
  Help
};

/// Groups of the tool bar, kept apart by separators. None: no button.
enum class ToolGroup : std::uint8_t { None, File, Edit, Data, Zoom, Show };

/// What an entry reads while it follows the program; what is empty is as in the row.
struct CommandFace {
  std::string caption = {};
  std::string_view hint = {};
};

/// A row with neither `run` nor `mode` is announced: its entry stands in its place, disabled, until a handler is attached.
struct Command {
  std::string_view name;               ///< of the action, for settings, help and tests
  std::string_view caption = {};       ///< with its mnemonic; empty: reached by its shortcut alone
  std::string_view menu_caption = {};  ///< in menus; empty: the caption there, too
  std::string_view shortcut = {};      ///< portable text, "Ctrl+N"; empty for none
  std::string_view hint = {};          ///< "tool tip|status bar text"
  std::string_view icon = {};          ///< name of a drawing under icons/; empty for none
  Menu menu = Menu::None;
  int group = 0;  ///< entries of a menu stand by group, with separators between groups
  ToolGroup tool = ToolGroup::None;
  int popup = 0;  ///< group in the popup menu of a graph, from 1 on; 0: not there
  bool (*enabled)(const CommandContext&) = nullptr;  ///< null: always
  void (*run)(CommandContext&) = nullptr;            ///< may throw Error
  /// Makes the mode that the command switches on and, chosen again, off; it has a check mark while it is on. `run`, where
  /// there is one, is run before and may refuse by throwing.
  ModeMaker mode = nullptr;
  CommandFace (*face_now)(const CommandContext&) = nullptr;  ///< shows what a click will do
  bool (*checked)(const CommandContext&) =
      nullptr;          ///< null: the entry has no check mark, but for a mode's
  bool hidden = false;  ///< known by name alone: nothing is shown, no key reaches it
};

/// The part of a hint before the bar, or all of it: the tool tip.
std::string_view ShortHint(std::string_view hint);
/// The part after the bar, or all of it: the status bar's text.
std::string_view LongHint(std::string_view hint);

/// Conditions shared by many rows.
bool HasDocument(const CommandContext& context);
bool HasDataSet(const CommandContext& context);

/// Whether the command can be run now.
bool IsEnabled(const Command& command, const CommandContext& context);
/// Whether the command's entry has a check mark at all, and now.
bool IsCheckable(const Command& command);
bool IsChecked(const Command& command, const CommandContext& context);

/// Runs the command when it is enabled. An Error that it throws is told to the user: this is the commands' edge.
void RunCommand(const Command& command, CommandContext& context);
/// The same for what no row stands for: a file in a menu, a button of a panel.
void RunAsCommand(const std::function<void(CommandContext&)>& work, CommandContext& context);

}  // namespace tarnwick
