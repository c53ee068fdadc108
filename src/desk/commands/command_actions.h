// The command table as actions: makes menus and tool bar from the rows and keeps captions and enabling in step with the
// active document. Knows Qt's menus; decides nothing about commands.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "desk/commands/command.h"
#include "desk/commands/menu_list.h"

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace tarnwick {

class CommandActions final : public QObject {
  Q_OBJECT

 public:
  using MakeContext = std::function<CommandContext()>;

  /// Fills the window's menu bar and a tool bar from the rows, which outlive this. `make_context` says what a command works
  /// with when it runs.
  CommandActions(QMainWindow& window, const std::vector<const Command*>& rows,
                 MakeContext make_context);

  /// Adds entries that are looked up whenever their menu opens.
  void AddList(const MenuList& list);
  /// Adds these entries to a menu that is made for one showing.
  void AddItems(QMenu& menu, const std::vector<MenuItem>& items);
  /// Adds the commands of a graph's popup menu, group by group, separators between.
  void AddPopupCommands(QMenu& menu) const;
  /// Brings captions and enabling up to date. Called when the active document or its state changed.
  void Update();
  /// Does `work` in the present context as a command is done: an Error is told to the user.
  void RunAsCommand(const std::function<void(CommandContext&)>& work);
  /// The menu of the menu bar or submenu; null when nothing is in it.
  QMenu* MenuOf(Menu menu) const;
  /// The action of that command; null when there is none.
  QAction* ActionOf(std::string_view name) const;
  QToolBar& ToolBar() const { return *tool_bar_; }

 private:
  struct Entry {
    const Command* command;
    QAction* action;
  };

  void MakeActions(const std::vector<const Command*>& rows);
  void MakeMenus();
  void MakeMenu(Menu menu, std::string_view caption);
  std::unique_ptr<QAction> MakeAction(const MenuItem& item);
  void MakeToolBar();
  void Run(const Command& command);

  QMainWindow& window_;
  MakeContext make_context_;
  std::vector<Entry> entries_;
  std::map<Menu, QMenu*> menus_;
  QToolBar* tool_bar_ = nullptr;
};

}  // namespace tarnwick
