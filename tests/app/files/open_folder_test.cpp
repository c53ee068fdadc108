// A folder opened as a whole.
#include "desk/prompts/folder_files.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "desk/prompts/read_folder_dialog.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class OpenFolderTest : public testing::DesktopTest {
 protected:
  void Open(const char* mask) {
    chooser_->folder_to_open = FolderChoice{folder_.File("data"), mask};
    Run("FileOpenFolder1");
  }
  void Write(const std::string& name, const std::string& text) {
    std::filesystem::create_directories(folder_.File("data"));
    folder_.Write("data/" + name, text);
  }
  /// "Graph_1 - a.dat: 3" of each window: its number of DataSets.
  std::vector<std::string> Opened() {
    std::vector<std::string> opened;
    for (const TGraphWindow* window : form_->GraphWindows()) {
      const Document& document = window->GetDocument();
      opened.push_back(document.Files().Caption() + ": " +
                       std::to_string(document.Graph().SeriesCount()));
    }
    return opened;
  }
  const std::string same_ = "Use same settings for all data files?";
};

TEST_F(OpenFolderTest, MasksNameFilesByName) {
  for (const char* name : {"b.dat", "A.DAT", "c.txt", ".hidden.dat", "d.tmp", "noending"})
    Write(name, "1 2\n");
  std::filesystem::create_directories(folder_.File("data/e.dat"));
  struct Row {
    const char* mask;
    std::vector<std::string> names;
  };
  const Row rows[] = {{"*.*", {"A.DAT", "b.dat", "c.txt", "noending"}},
                      {"*.dat", {"A.DAT", "b.dat"}},
                      {"*.txt; b*", {"b.dat", "c.txt"}},
                      {"*.tmp", {}}};
  for (const Row& row : rows) {
    std::vector<std::string> names;
    for (const auto& file : FilesOfFolder(folder_.File("data"), row.mask))
      names.push_back(file.filename().string());
    EXPECT_EQ(names, row.names) << row.mask;
  }
}

TEST_F(OpenFolderTest, SettingsOfTheFirstFileHoldForAllOnRequest) {
  // Alone, the second file would get two DataSets: its third column holds numbers as well.
  Write("a.dat", "x;y;note\n1;2;p\n2;3;q\n3;5;r\n");
  Write("b.dat", "x;y;note\n1;4;7\n2;5;8\n3;7;9\n");
  Start({});
  Expect(same_, Answer::Yes);
  Open("*.*");
  EXPECT_EQ(Opened(), (std::vector<std::string>{"Graph_1 - a.dat: 1", "Graph_2 - b.dat: 1"}));
  Expect(same_, Answer::No);
  Open("*.dat");
  EXPECT_EQ(Opened().back(), "Graph_4 - b.dat: 2");
}

TEST_F(OpenFolderTest, WhatCannotBeOpenedIsToldOnceAtTheEnd) {
  Write("a.dat", "1 2\n2 3\n");
  Write("b.tgr", "no graph");
  Write("c.dat", "no numbers\n");
  Write("d.tfn", "no window");
  Start({});
  Expect(same_, Answer::No);
  Open("*.*");
  EXPECT_EQ(Opened(), std::vector<std::string>{"Graph_1 - a.dat: 1"});
  const std::vector<std::string> told = TakeTold();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].starts_with("2 files could not be opened:\n\n")) << told[0];
  EXPECT_NE(told[0].find("b.tgr has wrong format"), std::string::npos) << told[0];
}

TEST_F(OpenFolderTest, ManyWindowsAreAskedAbout) {
  for (int i = 0; i < 21; ++i) Write("f" + std::to_string(i) + ".dat", "1 2\n2 3\n");
  Start({});
  Expect("Open 21 files, each in a window of its own?", Answer::No);
  Open("*.*");
  EXPECT_TRUE(Opened().empty());
}

TEST_F(OpenFolderTest, TheDialogShowsWhichFilesAreMeant) {
  Write("a.dat", "1 2\n");
  Write("b.txt", "1 2\n");
  Txy_ReadFolder dialog(folder_.File("data"), nullptr);
  auto& mask = *dialog.findChild<QLineEdit*>("Mask");
  const auto& files = *dialog.findChild<QLabel*>("Files");
  const auto buttons = dialog.findChildren<QPushButton*>();
  const QPushButton& open = **std::ranges::find(buttons, true, &QPushButton::isDefault);
  EXPECT_EQ(files.text(), "2 files: a.dat, b.txt");
  mask.setText("*.xy");
  EXPECT_EQ(files.text(), mask.toolTip());
  EXPECT_FALSE(open.isEnabled());
  mask.setText("*.dat");
  EXPECT_EQ(dialog.Choice().mask, "*.dat");
  EXPECT_TRUE(open.isEnabled());
  dialog.findChild<QLineEdit*>("Folder")->setText("/no/such");
  EXPECT_EQ(files.text(), "There is no such folder.");
}

}  // namespace
}  // namespace tarnwick
