#include "desk/settings/settings.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr Setting<double> kWidth = {
    .section = "Paper", .key = "Width", .fallback = 7.5, .label = "Width"};
constexpr Setting<bool> kShown = {
    .section = "Panel", .key = "Shown", .fallback = true, .label = "Shown"};
constexpr Setting<QSize> kSize = {
    .section = "Panel", .key = "Size", .fallback = {3, 4}, .label = "Size"};

TEST(Settings, BooleansAreReadAsOthersWriteThem) {
  const testing::TemporaryFolder folder;
  struct Row {
    const char* text;
    bool read;
  };
  constexpr Row kRows[] = {{"0", false}, {"1", true}, {"False", false}, {"true", true},
                           {"no", true}, {"2", true}, {"", true},       {"@Size(1 2)", true}};
  for (const Row& row : kRows) {
    // Names of their own: files of one name and size written within a moment are taken for the same.
    const auto file = folder.Write("settings" + std::to_string(&row - kRows) + ".ini",
                                   std::string("[Panel]\nShown=") + row.text);
    const Settings settings(
        std::make_unique<QSettings>(QString::fromStdString(file.string()), QSettings::IniFormat));
    EXPECT_EQ(settings.Read(kShown), row.read) << row.text;
  }
}

TEST(Settings, AStoreThatCannotBeWrittenIsTold) {
  const testing::TemporaryFolder folder;
  folder.Write("no folder", "");
  const QString name = QString::fromStdString(folder.File("no folder/settings.ini").string());
  EXPECT_EQ(Settings(std::make_unique<QSettings>(name, QSettings::IniFormat)).Trouble(),
            "Settings and recent files are not kept: " + name + " cannot be written");
}

TEST(Settings, WhatIsStoredIsReadAndNonsenseIsNot) {
  const testing::TemporaryFolder folder;
  const auto file =
      folder.Write("settings.ini", "[Paper]\nWidth=wide\n[Panel]\nShown=false\nSize=@Size(5 6)\n");
  const QString name = QString::fromStdString(file.string());
  {
    Settings settings(std::make_unique<QSettings>(name, QSettings::IniFormat));
    EXPECT_EQ(settings.Read(kWidth), 7.5);
    EXPECT_EQ(settings.Read(kShown), false);
    EXPECT_EQ(settings.Read(kSize), QSize(5, 6));
    settings.Write(kWidth, 0.1);
    settings.Write(kShown, true);
  }
  EXPECT_EQ(testing::ReadFile(file),
            "[Panel]\nShown=true\nSize=@Size(5 6)\n\n[Paper]\nWidth=0.1\n");
  std::filesystem::remove(file);
  const Settings none(std::make_unique<QSettings>(name, QSettings::IniFormat));
  EXPECT_EQ(none.Read(kShown), true);
  EXPECT_EQ(none.Read(kSize), QSize(3, 4));
}

}  // namespace
}  // namespace tarnwick
