// A start after a crash: the question, what its answers do, and that a second crash loses nothing either.
#include <QFileInfo>
#include <QTest>

#include "desk/recovery/left_graphs.h"
#include "desk/recovery/recovery_store.h"
#include "desktop_fixture.h"
#include "graph/files/graph_file.h"

namespace tarnwick {
namespace {

class RecoveryDesktopTest : public testing::DesktopTest {
 protected:
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.recovery = root_ = folder_.File("recovery");
    return paths;
  }
  /// What a program that was killed left: a graph with two points that belongs into saved.tgr, which holds one.
  void LeaveAGraph() {
    TxyGraph graph;
    TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
    series.AddPoint(1, 1);
    SaveGraph(graph, saved_);
    series.AddPoint(2, 2);
    RecoveryStore(root_).Write(
        1, {{"Graph_4", saved_}, graph.State(), std::filesystem::file_time_type::clock::now()});
    const QString time = QFileInfo(QString::fromStdString(FindLeftGraphs(root_)[0].copy.string()))
                             .lastModified()
                             .toString("HH:mm");
    question_ =
        "Tarnwick was ended before these changes were saved:\n\nGraph_4 (saved.tgr), changed " +
        time.toStdString() +
        "\n\nOpen them? \"No\" discards them, \"Cancel\" asks again at the next start.";
  }

  std::filesystem::path root_;
  std::filesystem::path saved_ = folder_.File("saved.tgr");
  std::string question_;
};

TEST_F(RecoveryDesktopTest, WhatWasOpenOpensChangedAndSavesWhereItWent) {
  LeaveAGraph();
  Expect(question_, Answer::Yes);
  Start({});
  ASSERT_EQ(form_->GraphWindows().size(), 1U);
  EXPECT_EQ(ActiveDocument().Files().Caption(), "Graph_4 ( " + saved_.string() + " )");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 2);
  EXPECT_TRUE(ActiveDocument().History().Changed() && ActiveDocument().Files().ClosingLoses());
  const auto own = [this] {
    // Folders go away meanwhile: the program takes over the copies in a thread of its own.
    std::error_code gone;
    for (std::filesystem::recursive_directory_iterator entry(root_, gone), end; entry != end;
         entry.increment(gone))
      if (NumberOfCopy(entry->path()) == 1) return true;
    return false;
  };
  EXPECT_TRUE(own());
  EXPECT_TRUE(QTest::qWaitFor([this] { return FindLeftGraphs(root_).empty(); }))
      << "the copy is that of this program";
  EXPECT_TRUE(own()) << "a second crash would lose the graph";
  Run("FileSave1");
  EXPECT_EQ(LoadGraph(saved_)->Series(0).PointCount(), 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !own(); })) << "saved, it is not offered again";
}

TEST_F(RecoveryDesktopTest, WhatTheLastSessionHadOpenTooOpensOnce) {
  LeaveAGraph();
  TearDown();
  QSettings store(QString::fromStdString(folder_.File("settings.ini").string()),
                  QSettings::IniFormat);
  store.setValue("Tarnwick/ReopenWindows", true);
  store.setValue("Tarnwick/Session",
                 QStringList{"1 2 0 0 9 9 " + QString::fromStdString(saved_.string())});
  SetUp();
  Expect(question_, Answer::Yes);
  Start({});
  ASSERT_EQ(form_->GraphWindows().size(), 1U);
  EXPECT_TRUE(ActiveDocument().History().Changed());
}

TEST_F(RecoveryDesktopTest, CancelAsksAgainAndNoDiscards) {
  LeaveAGraph();
  Expect(question_, Answer::Cancel);
  Start({});
  EXPECT_TRUE(form_->GraphWindows().empty());
  EXPECT_EQ(FindLeftGraphs(root_).size(), 1U);
  TearDown();
  SetUp();
  Expect(question_, Answer::No);
  Start({});
  EXPECT_TRUE(form_->GraphWindows().empty());
  EXPECT_TRUE(std::filesystem::is_empty(root_));
}

TEST_F(RecoveryDesktopTest, ACopyOlderThanItsFileIsToldAndKept) {
  LeaveAGraph();
  const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
  std::filesystem::last_write_time(saved_, later);
  Start({});
  EXPECT_TRUE(form_->GraphWindows().empty());
  const auto kept = root_.parent_path() / "older copies" / "saved (1).tgr";
  const std::vector<std::string> told = TakeTold();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].starts_with("saved.tgr was written at ") && told[0].ends_with(kept.string()));
  EXPECT_EQ(LoadGraph(kept)->Series(0).PointCount(), 2);
  EXPECT_TRUE(FindLeftGraphs(root_).empty());
}

TEST_F(RecoveryDesktopTest, ADamagedCopyIsToldAndStopsNothing) {
  LeaveAGraph();
  testing::WriteFile(FindLeftGraphs(root_)[0].copy, "no graph");
  Expect(question_, Answer::Yes);
  Start({Example("decay.dat")});
  EXPECT_EQ(TakeTold().size(), 1U);
  EXPECT_EQ(form_->GraphWindows().size(), 1U);
}

}  // namespace
}  // namespace tarnwick
