// Files on their way out: saved, saved under another name, and the way back to what was saved.
#include <QCoreApplication>
#include <QImage>

#include "desktop_fixture.h"
#include "graph/files/file_kinds.h"
#include "graph/graph_state_compare.h"

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

TEST_F(DesktopTest, DataLoadedBesideOthersLeaveTheTitle) {
  Start({Example("decay.dat")});
  chooser_->to_open = {Example("pendulum.csv")};
  Run("FileLoadData1");
  QCoreApplication::processEvents();
  EXPECT_EQ(ActiveDocument().Graph().GetAppearance().title_of_graph, "decay");
}

TEST_F(DesktopTest, DiscardChangesOfDataGoesBackToThemAsTheyWereOpened) {
  Start({Example("decay.dat")});
  const std::int32_t opened = ActiveDocument().Graph().Series(0).PointCount();
  const auto expect_as_opened = [&] {
    const TxyGraph& graph = ActiveDocument().Graph();
    EXPECT_EQ(graph.Series(0).PointCount(), opened);
    EXPECT_EQ(graph.GetAppearance().title_of_graph, "decay");
    EXPECT_FALSE(graph.Axis(AxisId::Y2).Look().ShowAxis);
    EXPECT_FALSE(ActiveDocument().History().Changed());
  };
  const auto change = [&] {
    ActiveDocument().Edit("Delete Point", [](TxyGraph& graph) { graph.Series(0).Clear(); });
  };
  change();
  Expect("This will discard all changes. Reload Graph_1 ?", Answer::Yes);
  Run("FileReload1");
  expect_as_opened();
  EXPECT_EQ(ActiveDocument().History().RedoName(), "Delete Point");
  // A template keeps no points.
  change();
  chooser_->to_save = {folder_.File("look.ttp")};
  Run("FileSaveAs1");
  EXPECT_FALSE(ActiveDocument().History().Changed());
  ActiveDocument().Edit("Add Point", [](TxyGraph& graph) { graph.Series(0).AddPoint(1, 2); });
  chooser_->to_save = {folder_.File("look2.ttp")};
  Run("FileSaveAs1");
  Expect("This will discard all changes. Reload Graph_1 ?\n\nIt holds points that lie in no file.",
         Answer::Yes);
  Run("FileReload1");
  expect_as_opened();
}

TEST_F(DesktopTest, AFileThatIsGoneOrDamagedLeavesTheGraphAsItIs) {
  Start({Example("decay.dat")});
  const auto file = folder_.File("kept.tgr");
  chooser_->to_save = {file};
  Run("FileSaveAs1");
  chooser_->to_open = {Example("pendulum.csv")};
  Run("FileLoadData1");
  const auto reload = [&] {
    const GraphState before = ActiveDocument().Graph().State();
    Run("FileReload1");
    EXPECT_TRUE(SameState(ActiveDocument().Graph().State(), before));
    EXPECT_TRUE(ActiveDocument().History().Changed());
    EXPECT_EQ(ActiveDocument().History().UndoName(), "Load Data");
    return TakeTold();
  };
  folder_.Write("kept.tgr", testing::ReadFile(file).substr(0, 900));
  Expect("This will discard all changes. Reload Graph_1 ?", Answer::Yes);
  const std::vector<std::string> damaged = reload();
  ASSERT_EQ(damaged.size(), 1U);
  EXPECT_TRUE(damaged[0].ends_with("\n\nFile " + file.string() + " has wrong format"));
  std::filesystem::remove(file);
  EXPECT_EQ(reload(), std::vector{"File \"" + file.string() + "\" is not found!"});
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

TEST_F(DesktopTest, WhatOthersWroteIsReplacedByNobodyUnasked) {
  const auto data = folder_.Write("d.csv", testing::ReadFile(Example("pendulum.csv")));
  Start({data});
  Expect("File " + data.string() +
             " exists. Overwrite?\n\nThe data come from it: its rows, columns and remarks that the "
             "graph does not show would be lost.",
         Answer::No);
  chooser_->to_save = {data};
  Run("FileSaveAs1");
  const auto file = folder_.File("mine.tgr");
  chooser_->to_save = {file};
  Run("FileSaveAs1");
  EXPECT_FALSE(ActiveDocument().Files().ClosingLoses());
  const std::string changed = "File " + file.string() +
                              " was changed by another program since it was opened or saved here. "
                              "Overwrite?";
  folder_.Write("mine.tgr", "another graph");
  EXPECT_TRUE(ActiveDocument().Files().ClosingLoses());
  Expect(changed, Answer::No);
  Run("FileSave1");
  EXPECT_EQ(testing::ReadFile(file), "another graph");
  Expect(changed, Answer::Yes);
  Run("FileSave1");
  EXPECT_FALSE(ActiveDocument().Files().GraphFileChanged());
  Run("FileSave1");  // unasked
  folder_.Write("mine.tgr", "another graph");
  Expect("Save changes to Graph_1 ?\n\nIts file was changed by another program since.",
         Answer::Cancel);
  Run("FileClose1");
  Expect(changed, Answer::Yes);
  Run("FileSave1");

  chooser_->to_open = {Example("decay.dat")};
  Run("FileOpen1");
  chooser_->to_save = {file};
  Run("FileSaveAs1");
  EXPECT_EQ(TakeTold(), std::vector{"Graph_1 shows " + file.string() +
                                    ". Close that window first, or choose another name."});
}

TEST_F(DesktopTest, AnUnknownEndingNeverCountsAsSaved) {
  Start({Example("decay.dat")});
  for (const char* name : {"a.txt", "a.5", "a."}) {
    Expect("Save changes to Graph_1 ?", Answer::Yes);
    chooser_->to_save = {folder_.File(name)};
    Run("FileClose1");
    ASSERT_EQ(form_->GraphWindows().size(), 1U) << name << ": its data are gone";
    EXPECT_TRUE(ActiveDocument().History().Changed());
    EXPECT_FALSE(std::filesystem::exists(folder_.File(name))) << "and nothing is written";
  }
  EXPECT_TRUE(TakeTold().empty());
  Expect("Save changes to Graph_1 ?", Answer::Yes);
  chooser_->to_save = {folder_.File("a.tgr")};
  Run("FileClose1");
  EXPECT_TRUE(form_->GraphWindows().empty());
}

TEST_F(DesktopTest, WhatDoesNotKeepTheGraphNeverCountsAsSaved) {
  Start({Example("decay.dat")});
  ActiveDocument().Edit("Delete", [](TxyGraph& graph) { graph.Series(0).DeletePoint(1); });
  const std::string question = "Save changes to Graph_1 ?";
  Expect(question, Answer::Yes);
  for (const char* name : {"a.png", "a.dat", "a.tds", "a.csv"}) {
    chooser_->to_save.push_back(folder_.File(name));
    Expect(question + "\n\nWhat was saved does not keep the whole graph. A graph file (.tgr) does.",
           Answer::Yes);
  }
  chooser_->to_save.push_back(folder_.File("a.ttp"));
  const std::string points =
      question + "\n\nIt holds points that lie in no file. A graph file (.tgr) keeps them.";
  Expect(points, Answer::Cancel);
  form_->close();
  ASSERT_EQ(form_->GraphWindows().size(), 1U);
  EXPECT_FALSE(ActiveDocument().History().Changed()) << "a template clears the flag";
  Expect("Discard changes in graph(s) \"Graph_1\", ?", Answer::No);
  Run("FileCloseAll1");
  chooser_->to_save = {folder_.File("a.tgr")};
  Expect(points, Answer::Yes);
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
