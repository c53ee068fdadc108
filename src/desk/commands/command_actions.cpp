#include "desk/commands/command_actions.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>

#include "desk/commands/menu_table.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// "New (Ctrl+N)"
QString ToolTip(const Command& command) {
  QString tip = ToQt(ShortHint(command)).trimmed();
  if (!command.shortcut.empty()) {
    const QKeySequence keys(ToQt(command.shortcut), QKeySequence::PortableText);
    tip += " (" + keys.toString(QKeySequence::NativeText) + ")";
  }
  return tip;
}

/// Actions by the group of a menu that they stand in.
using Groups = std::map<int, QList<QAction*>>;

void AddGroups(QMenu& menu, const Groups& groups) {
  for (const auto& [group, actions] : groups) {
    if (group != groups.begin()->first) menu.addSeparator();
    menu.addActions(actions);
  }
}

}  // namespace

CommandActions::CommandActions(QMainWindow& window, const std::vector<const Command*>& rows,
                               MakeContext make_context)
    : QObject(&window), window_(window), make_context_(std::move(make_context)) {
  MakeActions(rows);
  MakeMenus();
  MakeToolBar();
}

void CommandActions::MakeActions(const std::vector<const Command*>& rows) {
  for (const Command* command : rows) {
    auto* action = new QAction(InkIcon(command->icon), ToQt(command->caption), &window_);
    action->setObjectName(ToQt(command->name));
    action->setToolTip(ToolTip(*command));
    action->setStatusTip(ToQt(LongHint(*command)));
    if (!command->shortcut.empty()) {
      action->setShortcut(QKeySequence(ToQt(command->shortcut), QKeySequence::PortableText));
    }
    action->setCheckable(IsCheckable(*command));
    // The platform's guesses from captions ("Quit", "About") would move entries to other menus.
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, command] { Run(*command); });
    window_.addAction(action);
    entries_.push_back({command, action});
  }
}

void CommandActions::MakeMenus() {
  for (const MenuRow& row : MenuTable()) {
    auto* menu = new QMenu(ToQt(row.caption), &window_);
    Groups groups;
    for (const Entry& entry : entries_) {
      if (entry.command->menu == row.menu) groups[entry.command->group].push_back(entry.action);
    }
    AddGroups(*menu, groups);
    menus_[row.menu] = menu;
  }
  const auto rows = MenuTable();
  // Submenus stand after their parents, so going backwards fills parents before they are judged.
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    QMenu* menu = menus_[row->menu];
    if (menu->isEmpty()) {
      delete menu;
      menus_.erase(row->menu);
    } else if (row->parent != Menu::None) {
      QMenu* parent = menus_[row->parent];
      parent->insertMenu(parent->actions().value(0), menu);
    }
  }
  for (const MenuRow& row : rows) {
    if (row.parent == Menu::None && menus_.contains(row.menu)) {
      window_.menuBar()->addMenu(menus_[row.menu]);
    }
  }
}

void CommandActions::MakeToolBar() {
  auto* bar = new QToolBar(tr("Tool Bar"), &window_);
  bar->setObjectName("ToolBar");
  bar->setIconSize({20, 20});
  bar->setMovable(false);
  for (const ToolGroup group :
       {ToolGroup::File, ToolGroup::Edit, ToolGroup::Data, ToolGroup::Zoom, ToolGroup::Show}) {
    if (!bar->actions().isEmpty()) bar->addSeparator();
    for (const Entry& entry : entries_) {
      if (entry.command->tool == group) bar->addAction(entry.action);
    }
  }
  window_.addToolBar(bar);
}

void CommandActions::AddList(const MenuList& list) {
  QMenu* menu = MenuOf(list.menu);
  if (!menu) return;
  using Items = std::vector<std::unique_ptr<QAction>>;
  const auto shown = std::make_shared<Items>();
  connect(menu, &QMenu::aboutToShow, this, [this, menu, shown, make = list.items] {
    shown->clear();
    const auto add = [&](std::unique_ptr<QAction> action) {
      menu->addAction(action.get());
      shown->push_back(std::move(action));
    };
    for (const MenuItem& item : make(make_context_(), menu->fontMetrics())) {
      if (shown->empty()) {
        auto separator = std::make_unique<QAction>();
        separator->setSeparator(true);
        add(std::move(separator));
      }
      auto action = std::make_unique<QAction>(item.caption);
      action->setStatusTip(item.hint);
      action->setCheckable(item.checked.has_value());
      action->setChecked(item.checked.value_or(false));
      connect(action.get(), &QAction::triggered, this,
              [this, run = item.run] { RunAsCommand(run); });
      add(std::move(action));
    }
  });
}

void CommandActions::AddPopupCommands(QMenu& menu) const {
  Groups groups;
  for (const Entry& entry : entries_) {
    if (entry.command->popup > 0) groups[entry.command->popup].push_back(entry.action);
  }
  AddGroups(menu, groups);
}

void CommandActions::Run(const Command& command) {
  CommandContext context = make_context_();
  RunCommand(command, context);
  Update();
}

void CommandActions::RunAsCommand(const std::function<void(CommandContext&)>& work) {
  CommandContext context = make_context_();
  tarnwick::RunAsCommand(work, context);
  Update();
}

void CommandActions::Update() {
  const CommandContext context = make_context_();
  for (const Entry& entry : entries_) {
    entry.action->setEnabled(!entry.command->enabled || entry.command->enabled(context));
    if (IsCheckable(*entry.command)) entry.action->setChecked(IsChecked(*entry.command, context));
    if (!entry.command->caption_now) continue;
    entry.action->setText(context.document ? ToQt(entry.command->caption_now(*context.document))
                                           : ToQt(entry.command->caption));
  }
}

QMenu* CommandActions::MenuOf(Menu menu) const {
  const auto found = menus_.find(menu);
  return found == menus_.end() ? nullptr : found->second;
}

QAction* CommandActions::ActionOf(std::string_view name) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.command->name == name; });
  return found == entries_.end() ? nullptr : found->action;
}

}  // namespace tarnwick
