// Files on their way out: saved, saved under another name, and the way back to what was saved.
#include <QCoreApplication>
#include <QImage>

#include "desktop_fixture.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST_F(DesktopTest, SavedAndOpenedAgainTheGraphIsTheSame) {
  Start({Example("decay.dat")});
  const auto file = folder_.File("run5.tgr");
  chooser_->to_save = {file};
  Run("FileSave1");  // no graph file yet: asks for a name
  EXPECT_EQ(ActiveDocument().Files().Caption(), "Graph_1 ( " + file.string() + " )");
  EXPECT_FALSE(ActiveDocument().History().Changed());
  const GraphState saved = ActiveDocument().Graph().State();
  const QImage picture = ActiveCanvas().grab().toImage();

  Run("FileClose1");
  EXPECT_TRUE(form_->GraphWindows().empty());
  chooser_->to_open = {file};
  Run("FileOpen1");
  ASSERT_EQ(form_->GraphWindows().size(), 1u);
  EXPECT_EQ(ActiveDocument().Name(), "Graph_1");  // the lowest free number again
  const GraphState opened = ActiveDocument().Graph().State();
  EXPECT_EQ(opened.appearance, saved.appearance);
  EXPECT_EQ(opened.legend, saved.legend);
  ASSERT_EQ(opened.series.size(), saved.series.size());
  EXPECT_EQ(opened.series[0].style, saved.series[0].style);
  DataSettings settings = saved.series[0].data.settings;
  settings.source.active =
      opened.series[0].data.settings.source.active;  // not stored, as the two after it
  settings.source.x_column_index = opened.series[0].data.settings.source.x_column_index;
  settings.source.y_column_index = opened.series[0].data.settings.source.y_column_index;
  EXPECT_EQ(opened.series[0].data.settings, settings);
  QCoreApplication::processEvents();
  EXPECT_EQ(ActiveCanvas().grab().toImage(), picture);
}

TEST_F(DesktopTest, DiscardChangesGoesBackToTheFile) {
  Start({Example("decay.dat")});
  const auto file = folder_.File("kept.tgr");
  chooser_->to_save = {file};
  Run("FileSaveAs1");
  const std::size_t count = ActiveDocument().Graph().SeriesCount();
  chooser_->to_open = {Example("decay.dat")};
  Run("FileLoadData1");
  ASSERT_GT(ActiveDocument().Graph().SeriesCount(), count);
  Expect("This will discard all changes. Reload Graph_1 ?", Answer::Yes);
  Run("FileReload1");
  EXPECT_EQ(ActiveDocument().Graph().SeriesCount(), count);
  EXPECT_FALSE(ActiveDocument().History().Changed());
}

TEST_F(DesktopTest, SaveAsAsksBeforeItReplaces) {
  Start({Example("decay.dat")});
  const auto old = folder_.Write("old.dat", "keep");
  Expect("File " + old.string() + " exists. Overwrite?", Answer::No);
  chooser_->to_save = {old};
  Run("FileSaveAs1");
  EXPECT_EQ(testing::ReadFile(old), "keep");
  EXPECT_EQ(chooser_->proposed.graph_name, "decay");
}

TEST_F(DesktopTest, AnUnknownEndingNeverCountsAsSaved) {
  Start({Example("decay.dat")});
  for (const char* name : {"a.txt", "a.5", "a."}) {
    Expect("Save changes to Graph_1 ?", Answer::Yes);
    chooser_->to_save = {folder_.File(name)};
    Run("FileClose1");
    ASSERT_EQ(form_->GraphWindows().size(), 1U) << name << ": its data are gone";
    EXPECT_TRUE(ActiveDocument().History().Changed());
    EXPECT_FALSE(std::filesystem::exists(folder_.File(name)));
  }
  EXPECT_TRUE(TakeTold().empty());
  Expect("Save changes to Graph_1 ?", Answer::Yes);
  chooser_->to_save = {folder_.File("a.tgr")};
  Run("FileClose1");
  EXPECT_TRUE(form_->GraphWindows().empty());
}

TEST_F(DesktopTest, SaveAsWritesEveryKindAndTellsWhatCannotBeWritten) {
  Start({Example("decay.dat")});
  for (const FileKind& kind : FileKinds()) {
    if (!kind.write) continue;
    const std::string name = "a" + std::string(kind.ending);
    chooser_->to_save = {folder_.File(name)};
    Run("FileSaveAs1");
    EXPECT_GT(std::filesystem::file_size(folder_.File(name)), 1000U) << name;
  }
  EXPECT_EQ(QImage(QString::fromStdString(folder_.File("a.png").string())).size(),
            ActiveCanvas().size());
  EXPECT_TRUE(TakeTold().empty());
  chooser_->to_save = {folder_.Path() / "gone" / "a.wmf"};
  Run("FileSaveAs1");
  const std::vector<std::string> told = TakeTold();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find("gone/a.wmf"), std::string::npos) << told[0];
}

}  // namespace
}  // namespace tarnwick
