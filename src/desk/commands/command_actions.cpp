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
QString ToolTip(std::string_view hint, std::string_view shortcut) {
  QString tip = ToQt(ShortHint(hint)).trimmed();
  if (!shortcut.empty()) {
    const QKeySequence keys(ToQt(shortcut), QKeySequence::PortableText);
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

QString MenuCaption(const Command& command) {
  return ToQt(command.menu_caption.empty() ? command.caption : command.menu_caption);
}

void ShowFace(QAction& action, const Command& command, const CommandFace& face) {
  action.setText(face.caption.empty() ? MenuCaption(command) : ToQt(face.caption));
  const std::string_view hint = face.hint.empty() ? command.hint : face.hint;
  action.setToolTip(ToolTip(hint, command.shortcut));
  action.setStatusTip(ToQt(LongHint(hint)));
}

std::unique_ptr<QAction> Separator() {
  auto separator = std::make_unique<QAction>();
  separator->setSeparator(true);
  return separator;
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
    auto* action = new QAction(&window_);
    action->setIcon(InkIcon(command->icon));
    action->setObjectName(ToQt(command->name));
    ShowFace(*action, *command, {});
    if (!command->menu_caption.empty()) {
      action->setIconText(ToQt(command->caption).remove(QLatin1Char('&')));
    }
    action->setVisible(!command->hidden);
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
  const auto rows = MenuTable();
  // Submenus stand after their parents, so going backwards makes them before those they hang in.
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) MakeMenu(row->menu, row->caption);
  for (const MenuRow& row : rows) {
    QMenu* menu = MenuOf(row.menu);
    if (menu && row.parent == Menu::None) window_.menuBar()->addMenu(menu);
  }
}

void CommandActions::MakeMenu(Menu menu, std::string_view caption) {
  Groups groups;
  for (const Entry& entry : entries_) {
    if (entry.command->menu == menu) groups[entry.command->group].push_back(entry.action);
  }
  for (const MenuRow& row : MenuTable()) {
    const QMenu* const submenu = row.parent == menu ? MenuOf(row.menu) : nullptr;
    if (submenu) groups[row.group].push_back(submenu->menuAction());
  }
  if (groups.empty()) return;
  menus_[menu] = new QMenu(ToQt(caption), &window_);
  AddGroups(*menus_[menu], groups);
}

void CommandActions::MakeToolBar() {
  auto* const bar = new QToolBar(tr("Tool Bar"), &window_);
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
  tool_bar_ = bar;
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
      if (shown->empty()) add(Separator());
      add(MakeAction(item));
    }
  });
}

std::unique_ptr<QAction> CommandActions::MakeAction(const MenuItem& item) {
  auto action = std::make_unique<QAction>(item.caption);
  action->setStatusTip(item.hint);
  action->setEnabled(item.enabled);
  action->setCheckable(item.checked.has_value());
  action->setChecked(item.checked.value_or(false));
  connect(action.get(), &QAction::triggered, this, [this, run = item.run] { RunAsCommand(run); });
  return action;
}

void CommandActions::AddItems(QMenu& menu, const std::vector<MenuItem>& items) {
  for (const MenuItem& item : items) {
    QAction* const action = MakeAction(item).release();  // the menu's from here
    action->setParent(&menu);
    menu.addAction(action);
  }
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
    entry.action->setEnabled(IsEnabled(*entry.command, context));
    if (IsCheckable(*entry.command)) entry.action->setChecked(IsChecked(*entry.command, context));
    if (entry.command->face_now)
      ShowFace(*entry.action, *entry.command, entry.command->face_now(context));
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
