#include "app/window/features.h"

#include <QFile>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "app/canvas/canvas_mode.h"
#include "desk/commands/menu_table.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST(Features, CommandsHoldTogether) {
  InkIcon("new");  // brings the drawings in
  std::set<std::string_view> names;
  std::set<QString> shortcuts;
  for (const Command* command : CommandsOf(Features())) {
    SCOPED_TRACE(command->name);
    EXPECT_TRUE(names.insert(command->name).second) << "two rows of one name";
    if (command->mode) {
      EXPECT_EQ(command->mode()->Maker(), command->mode) << "its mark would be missing";
    }
    if (!command->shortcut.empty()) {
      const QKeySequence keys(ToQt(command->shortcut), QKeySequence::PortableText);
      EXPECT_EQ(keys.count(), 1);
      EXPECT_TRUE(shortcuts.insert(keys.toString()).second) << "two rows of one shortcut";
    }
    if (command->hidden) continue;
    EXPECT_EQ(command->caption.empty(), command->menu == Menu::None);
    if (command->menu == Menu::None) continue;
    EXPECT_TRUE(QFile::exists(":/icons/" + ToQt(command->icon) + ".svg")) << command->icon;
  }
}

TEST(Features, PanelsSettingsAndFilesHoldTogether) {
  std::set<std::string> names;
  const auto add = [&](const std::string& name) {
    EXPECT_TRUE(names.insert(name).second) << "two rows of one name: " << name;
  };
  for (const Feature& feature : Features()) {
    SCOPED_TRACE(feature.name);
    EXPECT_FALSE(feature.commands.empty() && feature.panels.empty());
    for (const PanelRow& panel : feature.panels) {
      add(std::string(panel.name));
      EXPECT_FALSE(panel.caption.empty());
    }
    for (const SettingRow& row : feature.settings) {
      std::visit(
          [&](const auto* setting) {
            add(std::string(setting->section) + "/" + setting->key);
            EXPECT_NE(std::string_view(setting->label), "") << setting->key;
          },
          row);
    }
    for (const TakenFile& file : feature.files) {
      add("files " + std::to_string(static_cast<int>(file.holds)));
    }
  }
}

TEST(Features, HintsFallIntoToolTipAndStatusText) {
  EXPECT_EQ(ShortHint("Open|Open a File"), "Open");
  EXPECT_EQ(LongHint("Open|Open a File"), "Open a File");
  EXPECT_EQ(LongHint("Cascade"), "Cascade");  // no bar
}

TEST_F(DesktopTest, OnlyMenusThatHoldSomethingAreShownInOrder) {
  const auto commands = CommandsOf(Features());
  QStringList expected;
  for (const MenuRow& row : MenuTable()) {
    const bool filled =
        std::any_of(MenuTable().begin(), MenuTable().end(), [&](const MenuRow& menu) {
          return (menu.menu == row.menu || menu.parent == row.menu) &&
                 std::any_of(commands.begin(), commands.end(),
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
