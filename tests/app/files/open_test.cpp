// Files on their way in: opened, dropped, refreshed, told when they are bad.
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "desktop_fixture.h"
#include "graph/files/graph_file.h"
#include "support/project_paths.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;
using testing::PixelsOf;

TEST_F(DesktopTest, OpensADataFileAsAFinishedPlot) {
  Start({Example("decay.dat")});
  ASSERT_NE(form_->ActiveGraphWindow(), nullptr);
  EXPECT_EQ(ActiveDocument().Files().Caption(), "Graph_1 - decay.dat");
  EXPECT_TRUE(ActiveDocument().History().Changed());
  ASSERT_GE(ActiveDocument().Graph().SeriesCount(), 1u);

  const Color line = ActiveDocument().Graph().Series(0).Style().line_color;
  const QImage picture = ActiveCanvas().grab().toImage();
  EXPECT_GT(PixelsOf(picture, QColor(line.Red(), line.Green(), line.Blue())), 100);
  EXPECT_EQ(ActiveDocument().Graph().GetAppearance().title_of_graph, "decay");
  EXPECT_FALSE(form_->findChild<QWidget*>("ToldBar")->isVisible());
}

TEST_F(DesktopTest, ABarTellsWhatWasLeftOutUntilItIsClosed) {
  Start({folder_.Write("gap.csv", "t,u\n1,10\n2,\n3,30\n4,40\n")});
  const auto* bar = form_->findChild<QWidget*>("ToldBar");
  const auto text = [bar] { return bar->findChild<QWidget*>("Told")->accessibleName(); };
  auto* all_rows = bar->findChild<QPushButton*>("LoadAllRows");
  EXPECT_TRUE(bar->isVisible() && !all_rows->isVisible());
  EXPECT_EQ(text(), "1 row skipped (Y empty; first at line 3); lines are broken at 1 gap.");

  TDSInfo& source = ActiveDocument().Graph().Series(0).Source();
  source.AllRows = false;
  source.RowSamplingFrequency = 2;
  ActiveDocument().Files().Refresh();
  EXPECT_EQ(text(), "Every 2nd row is shown.");
  all_rows->click();
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 3);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Load All Rows");
  EXPECT_TRUE(bar->isVisible() && !all_rows->isVisible());
  EXPECT_EQ(text(), "1 row skipped (Y empty; first at line 3); lines are broken at 1 gap.");

  bar->findChild<QToolButton*>("CloseTold")->click();
  EXPECT_FALSE(bar->isVisible());
  ActiveDocument().Files().Refresh();
  EXPECT_FALSE(bar->isVisible()) << "the same was told again";
}

TEST_F(DesktopTest, TheOtherTableOfAFileOpensInAWindowOfItsOwn) {
  std::string text = "x y\n1 2\n2 3\n3 5\n4 4\n\nu v w\n";
  for (int i = 0; i < 9; ++i) text += std::to_string(i) + " " + std::to_string(2 * i) + " 7.5\n";
  Start({folder_.Write("two.txt", text)});
  for (const char* const y : {"v", "y", "v"}) {
    EXPECT_EQ(ActiveDocument().Graph().Series(0).SeriesName(), y);
    auto* const bar = form_->ActiveGraphWindow()->findChild<QWidget*>("ToldBar");
    auto* const other = bar->findChild<QPushButton*>("ReadOtherTable");
    ASSERT_TRUE(other->isVisible());
    other->click();
    bar->findChild<QToolButton*>("CloseTold")->click();
    EXPECT_FALSE(other->isVisible());
  }
  EXPECT_EQ(form_->GraphWindows().size(), 4u);
}

TEST_F(DesktopTest, ColumnsTakenAsErrorsAreToldAndLeftOutAtAClick) {
  Start({folder_.Write("errors.csv", "t,u,u_err\n1,10,1\n2,15,2\n3,30,1\n")});
  const auto* bar = form_->findChild<QWidget*>("ToldBar");
  EXPECT_EQ(bar->findChild<QWidget*>("Told")->accessibleName(),
            "\"u_err\" is taken as the error of \"u\".");
  const auto y_error = [this] {
    const TSeries& series = ActiveDocument().Graph().Series(0);
    return YErrorAt(series, series.Points().At(1));
  };
  EXPECT_EQ(y_error(), 2);
  bar->findChild<QPushButton*>("LeaveErrorsOut")->click();
  EXPECT_TRUE(IsUndefined(y_error()));
  EXPECT_FALSE(bar->isVisible());
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Leave Out Errors");
  ActiveDocument().History().Undo();
  EXPECT_EQ(y_error(), 2);
  bar->findChild<QPushButton*>("DrawErrors")->click();
  EXPECT_TRUE(IsUndefined(y_error()));
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), 2u);
  EXPECT_EQ(ActiveDocument().Graph().Series(1).SeriesName(), "u_err");
  EXPECT_EQ(ActiveDocument().Graph().Series(1).PointCount(), 3);
  EXPECT_FALSE(bar->isVisible());
}

TEST_F(DesktopTest, DroppedFilesOpenInTheWorkspaceOrLoadIntoAGraph) {
  Start({});
  Drop(*form_, {Example("decay.dat")});
  ASSERT_EQ(form_->GraphWindows().size(), 1u);
  const std::size_t before = ActiveDocument().Graph().SeriesCount();
  Drop(*form_->ActiveGraphWindow(), {Example("pendulum.csv")});
  EXPECT_EQ(form_->GraphWindows().size(), 1u);
  EXPECT_GT(ActiveDocument().Graph().SeriesCount(), before);
}

TEST_F(DesktopTest, AGraphFileTakesNoGraphsPlaceUnasked) {
  const auto one = folder_.File("one.tgr");
  const auto other = folder_.File("other.tgr");
  TxyGraph graph;
  graph.AddSeries(std::make_unique<TSeries>()).AddPoint(1, 2);
  SaveGraph(graph, one);
  SaveGraph(graph, other);
  Start({});
  Run("FileNew1");
  Drop(*form_->ActiveGraphWindow(), {one});  // there is nothing to lose
  Drop(*form_->ActiveGraphWindow(), {one});
  const std::string instead = ". Open it in a window of its own instead?";
  const auto drop = [&](const std::filesystem::path& file, const std::string& question,
                        Answer answer, const char* shown) {
    Expect(question, answer);
    Drop(*form_->ActiveGraphWindow(), {file});
    EXPECT_EQ(ActiveDocument().Files().GraphFileName().filename(), shown) << question;
  };
  const std::string replaces = "Loading \"other.tgr\" takes the place of Graph_1" + instead;
  drop(other, replaces, Answer::Cancel, "one.tgr");
  drop(other, replaces, Answer::No, "other.tgr");
  ActiveDocument().Edit("Delete", [](TxyGraph& changed) { changed.Series(0).DeletePoint(1); });
  drop(other, "This will discard all changes. Reload Graph_1 ?", Answer::No, "other.tgr");
  EXPECT_TRUE(ActiveDocument().History().Changed());
  drop(one, "Loading \"one.tgr\" discards all changes in Graph_1" + instead, Answer::Yes,
       "one.tgr");
  EXPECT_EQ(form_->GraphWindows().size(), 2U);
}

TEST_F(DesktopTest, ABadFileIsToldAndLeavesTheOthersAlone) {
  Start({Example("decay.dat")});
  const GraphState before = ActiveDocument().Graph().State();
  const auto graph = folder_.Write("broken.tgr", "not a graph at all");
  const auto text = folder_.Write("words.txt", "no numbers\nin this file\n");
  const auto one = folder_.Write("one.txt", "1.5\n");
  const auto gone = folder_.File("gone.dat");
  struct Row {
    std::filesystem::path file;
    std::vector<std::string> pieces;  // in the message, in this order; "$" is its end
  };
  const Row rows[] = {
      {graph, {graph.string(), "File " + graph.string() + " has wrong format"}},
      {text, {text.string(), "none of its 2 lines holds a number"}},
      {one, {one.string(), "if that is a table, tell that no header line stands above$"}},
      {gone, {"File \"" + gone.string() + "\" is not found!"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.file);
    chooser_->to_open = {row.file};
    Run("FileOpen1");
    const std::vector<std::string> told = TakeTold();
    ASSERT_EQ(told.size(), 1u);
    std::size_t from = 0;
    for (const std::string& piece : row.pieces) {
      from = (told.front() + '$').find(piece, from);
      ASSERT_NE(from, std::string::npos) << told.front();
    }
    EXPECT_EQ(form_->GraphWindows().size(), 1u);
  }
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), before.series.size());
  EXPECT_TRUE(SameState(ActiveDocument().Graph().State().series[0].data, before.series[0].data));
}

TEST_F(DesktopTest, FilesThatCannotBeReadAreToldTogether) {
  const auto good = folder_.Write("run.csv", "x,y\n1,10\n2,20\n3,30\n");
  const auto words = folder_.Write("words.txt", "no numbers\nin this file\n");
  const auto empty = folder_.Write("empty.csv", "");
  const auto told_of_two = [this] {
    const std::vector<std::string> told = TakeTold();
    return told.size() == 1 && told[0].starts_with("2 files could not be opened:") &&
           told[0].find("words.txt") != std::string::npos &&
           told[0].find("empty.csv") != std::string::npos;
  };
  form_->ProcessWords({words.string(), good.string(), empty.string()});
  EXPECT_TRUE(TakeTold().empty()) << "before the window stands nobody knows who speaks";
  form_->show();
  EXPECT_TRUE(QTest::qWaitFor(told_of_two));
  chooser_->to_open = {empty, good, words};
  Run("FileOpen1");
  EXPECT_TRUE(told_of_two());
  EXPECT_EQ(form_->GraphWindows().size(), 2U);
}

TEST_F(DesktopTest, ABackgroundThatIsNoPictureIsTold) {
  TxyGraph graph;
  Appearance appearance = graph.GetAppearance();
  appearance.background_image_file = folder_.Write("none.png", "no picture at all").string();
  graph.SetAppearance(appearance);
  SaveGraph(graph, folder_.File("graph.tgr"));
  Start({folder_.File("graph.tgr")});
  const std::vector<std::string> told = TakeTold();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].find("Cannot read the picture: "), 0u) << told[0];
  EXPECT_EQ(form_->GraphWindows().size(), 1u);
}

TEST_F(DesktopTest, AStartWhoseOnlyFileCannotBeReadFails) {
  const auto text = folder_.Write("words.txt", "no numbers\nin this file\n");
  form_->ProcessCommandLine(text.string());
  EXPECT_EQ(TakeTold().size(), 1u);
  EXPECT_TRUE(form_->StartFailed());
}

TEST_F(DesktopTest, AFileIsKnownByItsWholePath) {
  const auto file = folder_.Write("run.dat", "x,y\n1,10\n2,20\n3,30\n");
  form_->ProcessWords({std::filesystem::relative(file).string()});
  EXPECT_TRUE(ActiveDocument().Files().DataFileName().is_absolute());
}

TEST_F(DesktopTest, OptionsTakeEffectOnceTheWindowStands) {
  const auto file = folder_.Write("live.dat", "x,y\n1,10\n2,20\n3,30\n");
  form_->ProcessWords({"-maximize", file.string(), "-refresh", "no such file"});
  folder_.Write("live.dat", "x,y\n1,10\n2,20\n");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 3);
  form_->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(form_.get()));
  EXPECT_TRUE(
      QTest::qWaitFor([this] { return ActiveDocument().Graph().Series(0).PointCount() == 2; }));
  EXPECT_EQ(form_->statusBar()->currentMessage(), "There is no file \"no such file\"");
  EXPECT_FALSE(form_->findChild<QLabel*>("ReadOut")->isVisible()) << "it would lie below";
  EXPECT_TRUE(form_->isMaximized());
  form_->ProcessWords({"-no ", "-refresh", file.string()});
  EXPECT_EQ(form_->GraphWindows().size(), 2u) << "a second start's words open, its options rest";
}

TEST_F(DesktopTest, WordsOfAnotherStartWaitUntilTheProgramIsAtRest) {
  Start({});
  const auto one = folder_.Write("one.dat", "x,y\n1,10\n2,20\n");
  const auto two = folder_.Write("two.dat", "x,y\n1,10\n2,20\n3,30\n");
  // They come while the first file is read.
  QTimer::singleShot(0, form_.get(), [&] { form_->TakeWords({"-no ", two.string()}); });
  form_->ProcessWords({one.string()});
  EXPECT_TRUE(QTest::qWaitFor([this] { return form_->GraphWindows().size() == 2; }));
  EXPECT_EQ(ActiveDocument().Name(), "Graph_2");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 3);
}

TEST_F(DesktopTest, AllWindowsAreRefreshedAndTroublesToldTogether) {
  const auto kept = folder_.Write("kept.dat", "x,y\n1,10\n2,20\n3,30\n");
  const auto gone = folder_.Write("gone.dat", "x,y\n1,10\n2,20\n3,30\n");
  const auto lost = folder_.Write("lost.dat", "x,y\n1,10\n2,20\n3,30\n");
  Start({kept, gone, kept, lost});
  folder_.Write("kept.dat", "x,y\n1,10\n2,20\n");
  std::filesystem::remove(gone);
  std::filesystem::remove(lost);
  Run("editRefreshAll1");
  std::vector<int> points;
  for (const TGraphWindow* window : form_->GraphWindows())
    points.push_back(window->GetDocument().WholeGraph().Series(0).PointCount());
  EXPECT_EQ(points, (std::vector<int>{3, 2, 3, 2}));
  const std::vector<std::string> told = TakeTold();
  ASSERT_EQ(told.size(), 1u);
  for (const char* name : {"gone.dat", "lost.dat"})
    EXPECT_NE(told[0].find(name), std::string::npos) << told[0];
}

TEST_F(DesktopTest, RefreshReadsTheSourcesAgain) {
  const auto file = folder_.Write("live.dat", "x,y\n1,10\n2,20\n3,30\n");
  Start({file});
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 3);
  folder_.Write("live.dat", "x,y\n1,10\n2,20\n3,30\n4,40\n");
  Run("editRefresh1");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 4);

  // The graph file remembers the source.
  const auto graph = folder_.File("live.tgr");
  chooser_->to_save = {graph};
  Run("FileSave1");
  Run("FileClose1");
  folder_.Write("live.dat", "x,y\n1,10\n2,20\n3,30\n4,40\n5,50\n");
  chooser_->to_open = {graph};
  Run("FileOpen1");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 4);
  Run("editRefresh1");
  EXPECT_EQ(ActiveDocument().Graph().Series(0).PointCount(), 5);
}

class ShippedTemplateTest : public DesktopTest {
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.default_template = testing::SourceFolder() / "packaging/default.ttp";
    return paths;
  }
};

TEST_F(ShippedTemplateTest, LeavesNewGraphsToBeArrangedForTheirData) {
  Start({Example("reactor_log.tsv")});
  EXPECT_FALSE(ActiveDocument().Look().own);
  EXPECT_FALSE(ActiveDocument().Look().arranged_for.isEmpty());
  EXPECT_EQ(ActiveDocument().Graph().GetAppearance().title_of_graph, "reactor_log");
  Run("FileNew1");
  Run("FileReload1");
  EXPECT_EQ(ActiveDocument().Graph().SeriesCount(), 0U);
  chooser_->to_open = {Example("decay.dat")};
  Run("FileLoadData1");
  QCoreApplication::processEvents();
  EXPECT_EQ(ActiveDocument().Graph().GetAppearance().title_of_graph, "decay") << "arranged anew";
}

}  // namespace
}  // namespace tarnwick
