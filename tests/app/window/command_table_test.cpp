#include "app/window/command_table.h"

#include <QFile>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "desk/commands/menu_table.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST(CommandTable, RowsHoldTogether) {
  InkIcon("new");  // brings the drawings in
  std::set<std::string_view> names;
  std::set<QString> shortcuts;
  for (const Command* command : CommandTable()) {
    SCOPED_TRACE(command->name);
    EXPECT_TRUE(names.insert(command->name).second) << "two rows of one name";
    EXPECT_NE(command->run, nullptr);
    if (!command->shortcut.empty()) {
      const QKeySequence keys(ToQt(command->shortcut), QKeySequence::PortableText);
      EXPECT_EQ(keys.count(), 1);
      EXPECT_TRUE(shortcuts.insert(keys.toString()).second) << "two rows of one shortcut";
    }
    EXPECT_EQ(command->caption.empty(), command->menu == Menu::None);
    if (command->menu == Menu::None) continue;
    EXPECT_FALSE(LongHint(*command).empty());
    EXPECT_TRUE(QFile::exists(":/icons/" + ToQt(command->icon) + ".svg")) << command->icon;
  }
}

TEST(CommandTable, HintsFallIntoToolTipAndStatusText) {
  EXPECT_EQ(ShortHint(*FindCommand("FileOpen1")), "Open");
  EXPECT_EQ(LongHint(*FindCommand("FileOpen1")), "Open a File");
  EXPECT_EQ(LongHint(*FindCommand("WindowCascade1")), "Cascade");  // no bar
}

TEST_F(DesktopTest, OnlyMenusThatHoldSomethingAreShownInOrder) {
  QStringList expected;
  for (const MenuRow& row : MenuTable()) {
    const bool filled =
        std::any_of(MenuTable().begin(), MenuTable().end(), [&](const MenuRow& menu) {
          return (menu.menu == row.menu || menu.parent == row.menu) &&
                 std::any_of(CommandTable().begin(), CommandTable().end(),
                             [&](const Command* command) { return command->menu == menu.menu; });
        });
    if (row.parent == Menu::None && filled) expected.append(ToQt(row.caption));
  }
  QStringList shown;
  for (const QAction* action : form_->menuBar()->actions()) {
    shown.append(action->text());
    EXPECT_FALSE(action->menu()->isEmpty());
  }
  EXPECT_EQ(shown, expected);
}

}  // namespace
}  // namespace tarnwick
