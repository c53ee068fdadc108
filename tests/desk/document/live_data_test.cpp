// Data that come by themselves into a document: a real file that grows, and what steps do to points that came.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <QTest>
#include <fstream>
#include <string>

#include "desk/document/document.h"
#include "desk/document/finish_look.h"
#include "desk/document/open_edit.h"
#include "desk/document/refresh_documents.h"
#include "document/immediate_work.h"
#include "graph/edit/point_edit.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr int kMost = 10'000;  // ms

class LiveDataTest : public ::testing::Test {
 protected:
  LiveDataTest() {
    document_.Files().ReadDataFile(file_);
    Series().Source().Follow = true;
    document_.History().SetChanged(false);
  }

  TSeries& Series() { return document_.Graph().Series(0); }
  void Append(std::string_view rows) { std::ofstream(file_, std::ios::app) << rows; }
  bool WaitForPoints(int count) {
    return QTest::qWaitFor([&] { return Series().PointCount() == count; }, kMost);
  }
  void SetY(std::int32_t index, double y) {
    document_.Edit("Move Point", [=](TxyGraph& graph) {
      TSeries& series = graph.Series(0);
      series.SetY(series.Points().At(static_cast<std::size_t>(index)).id, y);
    });
  }
  std::string Ys() {
    std::string text;
    Series().Points().ForEachPoint(
        [&](double, double y) { text += std::to_string(static_cast<int>(y)) + ' '; });
    return text;
  }
  void Start() {
    document_.Live().Start();
    const std::vector<std::string> all = {"Following run.csv, 3 rows came"};
    ASSERT_TRUE(QTest::qWaitFor([&] { return document_.Live().Texts() == all; }, kMost));
  }

  testing::TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.Write("run.csv", "x,y\n1,1\n2,2\n3,3\n");
  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
  Document document_{"Graph_1", work_, prompt_};
};

TEST_F(LiveDataTest, ComesWhenStartedAndChangesTheDocument) {
  QTest::qWait(150);
  EXPECT_FALSE(document_.History().Changed()) << "nothing begins by itself";
  Start();
  document_.History().SetChanged(false);
  Append("4,4\n");
  ASSERT_TRUE(WaitForPoints(4));
  EXPECT_TRUE(document_.History().Changed());
  EXPECT_EQ(document_.Live().State(), StreamState::Running);
  EXPECT_THAT(document_.Live().Texts(), ::testing::ElementsAre("Following run.csv, 4 rows came"));
  document_.Live().Stop();
  EXPECT_EQ(document_.Live().State(), StreamState::Stopped);
}

TEST_F(LiveDataTest, IsArrangedAnewWhenFewPointsBecomeMany) {
  const QSizeF size(600, 400);
  FinishLook(document_, size);
  ASSERT_TRUE(Series().Style().show_symbols);
  QObject::connect(&document_, &Document::stateChanged, [&] { FinishLook(document_, size); });
  Start();
  std::string rows;
  for (int i = 4; i <= 500; ++i) rows += std::to_string(i) + ",1\n";
  Append(rows);
  ASSERT_TRUE(WaitForPoints(500));
  EXPECT_FALSE(Series().Style().show_symbols);
}

TEST_F(LiveDataTest, StaysWhenStepsAreUndoneAndMadeAgain) {
  Start();
  SetY(0, 7);
  Append("4,4\n5,5\n");
  ASSERT_TRUE(WaitForPoints(5));
  document_.History().Undo();
  EXPECT_EQ(Ys(), "1 2 3 4 5 ");
  Append("6,6\n");
  ASSERT_TRUE(WaitForPoints(6));
  document_.History().Redo();
  EXPECT_EQ(Ys(), "7 2 3 4 5 6 ");
}

TEST_F(LiveDataTest, StaysWhenPointsOfBeforeComeBack) {
  Start();
  document_.Edit("Clear Data", [](TxyGraph& graph) { graph.Series(0).Clear(); });
  Append("4,4\n");
  ASSERT_TRUE(WaitForPoints(1));
  document_.History().Undo();
  EXPECT_EQ(Ys(), "1 2 3 4 ");
  document_.History().Redo();
  EXPECT_EQ(Ys(), "4 ");
}

TEST_F(LiveDataTest, GivesBackThePointsOfBeforeWhereTheSourceBeganAnew) {
  SetY(0, 7);
  Start();
  EXPECT_EQ(Ys(), "1 2 3 ");
  EXPECT_EQ(document_.History().UndoName(), "Live Data Began Anew");
  document_.Live().Stop();
  document_.History().Undo();
  EXPECT_EQ(Ys(), "7 2 3 ");
}

TEST_F(LiveDataTest, TellsTheWayBackToPointsThatNoRowsReplace) {
  std::ofstream(file_) << "x,y\n1,1\n";
  document_.Live().Start();
  ASSERT_TRUE(WaitForPoints(1));
  const auto told = [&] { return document_.Live().Texts().front(); };
  EXPECT_EQ(told(), "Following run.csv, 1 row came; Undo gives back 3 points of before");
  document_.History().Undo();
  EXPECT_EQ(Ys(), "1 2 3 ");
  EXPECT_EQ(told(), "Following run.csv, 1 row came");
}

TEST_F(LiveDataTest, TellsTheCommandsWhenASourceEndsByItself) {
  Start();
  StreamState known = document_.Live().State();
  QObject::connect(&document_, &Document::stateChanged, [&] { known = document_.Live().State(); });
  std::ofstream(file_) << "a,b\n1,1\n2,2\n";
  EXPECT_TRUE(QTest::qWaitFor([&] { return known == StreamState::Failed; }, kMost));
}

TEST_F(LiveDataTest, KeepsThePointsOfAFileThatIsCutShort) {
  Start();
  std::filesystem::resize_file(file_, 0);
  const auto cut = [&] {
    return document_.Live().Texts().front().find("cut short") != std::string::npos;
  };
  ASSERT_TRUE(QTest::qWaitFor(cut, kMost));
  EXPECT_EQ(Series().Style().line_order, LineOrder::ByX);
  Append("x,y\n1.5,7\n2.5,8\n");
  ASSERT_TRUE(WaitForPoints(5));
  EXPECT_EQ(Ys(), "1 7 2 8 3 ");
  EXPECT_EQ(Series().Style().line_order, LineOrder::AsTheyCame) << "runs side by side";
  const auto is_broken = [this] {
    const auto apart = [this](std::size_t i) {
      return Series().Gaps().Between(Series().Points().At(i).id, Series().Points().At(i + 1).id);
    };
    return Series().Settings().BreakAtGaps && apart(0) && apart(1) && apart(2) && apart(3);
  };
  EXPECT_TRUE(is_broken());
  EditHistory& history = document_.History();
  while (history.CanUndo()) history.Undo();
  while (history.CanRedo()) history.Redo();
  EXPECT_EQ(Ys(), "1 7 2 8 3 ");
  EXPECT_EQ(Series().Style().line_order, LineOrder::AsTheyCame) << "as the points came back";
  EXPECT_TRUE(is_broken());
}

TEST_F(LiveDataTest, GivesBackWhatCameWhenAStepIsMadeAgain) {
  Start();
  Append("4,4\n");
  ASSERT_TRUE(WaitForPoints(4));
  document_.Live().Stop();
  EditHistory& history = document_.History();
  while (history.CanUndo()) history.Undo();
  EXPECT_EQ(document_.Graph().SeriesCount(), 0U);
  while (history.CanRedo()) history.Redo();
  EXPECT_EQ(Ys(), "1 2 3 4 ");
  history.Undo();
  history.Redo();
  EXPECT_EQ(Ys(), "1 2 3 4 ");
}

TEST_F(LiveDataTest, ForgottenPointsDoNotComeBackByUndoing) {
  SetY(0, 7);
  Series().Source().KeepPoints = 2;
  document_.Live().Start();
  ASSERT_TRUE(WaitForPoints(2));
  Append("4,4\n5,5\n");
  ASSERT_TRUE(QTest::qWaitFor([&] { return Ys() == "4 5 "; }, kMost)) << Ys();
}

TEST_F(LiveDataTest, WaitsWhileAStepIsOpen) {
  Start();
  {
    OpenEdit step(document_, "Move Legend");
    Append("4,4\n");
    QTest::qWait(300);
    EXPECT_EQ(Series().PointCount(), 3);
  }
  EXPECT_TRUE(WaitForPoints(4));
}

TEST_F(LiveDataTest, IsReadOnceMoreAfterARefresh) {
  Series().SetDuplicatesAllowed(true);
  Start();
  Append("4,4\n");
  ASSERT_TRUE(WaitForPoints(4));
  Append("5,5\n");
  document_.Files().Refresh();
  Append("6,6\n");
  ASSERT_TRUE(QTest::qWaitFor([&] { return Ys() == "1 2 3 4 5 6 "; }, kMost)) << Ys();
}

TEST_F(LiveDataTest, RowsThatCameAreNoEdits) {
  document_.Files().ReadBy({{0, Series().Source()}});  // as following is turned on
  Start();
  Append("4,4\n");
  ASSERT_TRUE(WaitForPoints(4));
  Document* const all[] = {&document_};
  EXPECT_TRUE(MayReadAgain(all)) << "nothing was edited";
  SetY(0, 7);
  Append("5,5\n");
  ASSERT_TRUE(WaitForPoints(5));
  prompt_.Expect(
      "Points of \"y\" were edited since they were read. Refreshing takes the edits back; Undo "
      "brings them again.\n\nRefresh all the same?",
      Answer::No);
  EXPECT_FALSE(MayReadAgain(all));
}

TEST_F(LiveDataTest, EndsWithTheDataSetThatTookIt) {
  Start();
  document_.Edit("Delete DataSet", [](TxyGraph& graph) { graph.DeleteSeries(0); });
  Append("4,4\n");
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return document_.Live().State() == StreamState::Stopped; }, kMost));
  EXPECT_FALSE(document_.Live().HasSources());
}

TEST_F(LiveDataTest, OfAPlaceThatIsOpenedComesAloneAndGetsADataSetForEachY) {
  TDSInfo place;
  place.DataSource = DataSourceKind::Lines;
  const auto make_pipe = [&](const char* name) {
    const std::string pipe = folder_.File(name).string();
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    place.DatasourceInfo = "pipe:" + pipe;
    return pipe;
  };
  make_pipe("silent");
  ASSERT_TRUE(document_.Files().ReadPlace(place));
  EXPECT_EQ(document_.Live().Texts().size(), 1U) << "the file beside it was not started";
  Document document("Graph_2", work_, prompt_);
  // Its own: what is written to a pipe goes to one of those that read it.
  const std::string pipe = make_pipe("sensor");
  ASSERT_TRUE(document.Files().ReadPlace(place));
  std::ofstream(pipe) << "1,2\n2,3,4\n3,4,5\n";
  ASSERT_TRUE(QTest::qWaitFor([&] { return document.Graph().SeriesCount() == 2; }, kMost));
  EXPECT_EQ(document.Graph().Series(0).PointCount(), 3);
  EXPECT_EQ(document.Graph().Series(1).PointCount(), 2);
  EXPECT_EQ(document.Graph().Series(1).SeriesName(), "Y2");
}

}  // namespace
}  // namespace tarnwick
