// The road of a file through the desktop, driven by the events that a user brings about.
#include <QAction>
#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "base/error.h"
#include "desk/commands/command_actions.h"
#include "desk/work/threaded_work.h"
#include "desktop_fixture.h"
#include "graph/files/graph_file.h"
#include "graph/read_out.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;
using testing::PixelsOf;

TEST_F(DesktopTest, OpensADataFileAsAFinishedPlot) {
  Start({Example("decay.dat")});
  ASSERT_NE(form_->ActiveGraphWindow(), nullptr);
  EXPECT_EQ(ActiveDocument().Caption(), "Graph_1");
  EXPECT_TRUE(ActiveDocument().Changed());
  ASSERT_GE(ActiveDocument().Graph().SeriesCount(), 1u);

  const Color line = ActiveDocument().Graph().Series(0).Style().line_color;
  const QImage picture = ActiveCanvas().grab().toImage();
  EXPECT_GT(PixelsOf(picture, QColor(line.Red(), line.Green(), line.Blue())), 100);
  EXPECT_EQ(ActiveDocument().Graph().GetAppearance().title_of_graph, "decay");
  EXPECT_TRUE(StatusText("Note").contains("points")) << StatusText("Note").toStdString();
}

TEST_F(DesktopTest, TheStatusLineFollowsTheMouse) {
  Start({Example("decay.dat")});
  EXPECT_EQ(StatusText("ReadOut").toStdString(), IdleReadOut());
  const QPoint place = ActiveCanvas().Layout().plot.center().toPoint();
  MoveMouse(place);
  const TxyGraph& graph = ActiveDocument().Graph();
  const auto point = PickPoint(graph, graph.Axis(AxisId::X).PixelToValue(place.x()));
  ASSERT_TRUE(point);
  const std::string text = StatusText("ReadOut").toStdString();
  EXPECT_EQ(text.find("Mouse X,Y: "), 0u) << text;
  EXPECT_NE(text.find("; pnt#" + std::to_string(point->number) + "  X,Y: "), std::string::npos)
      << text;

  MoveMouse({2.0, 1.0 * place.y()});
  EXPECT_TRUE(StatusText("ReadOut").endsWith("Point Not Found"));

  // A command's hint needs the room of what stands at the right.
  const auto* note = form_->findChild<QWidget*>("Note");
  form_->statusBar()->showMessage("Open a File");
  EXPECT_FALSE(note->isVisible());
  form_->statusBar()->clearMessage();
  EXPECT_TRUE(note->isVisible());
}

TEST_F(DesktopTest, TheWheelZoomsAboutThePointerAndBackspaceReturns) {
  Start({Example("decay.dat")});
  const TxyGraph& graph = ActiveDocument().Graph();
  const TAxis& x = graph.Axis(AxisId::X);
  const TAxis& y = graph.Axis(AxisId::Y);
  const double x_length = x.Max() - x.Min();
  const double y_length = y.Max() - y.Min();
  const QPointF place = ActiveCanvas().Layout().plot.center() + QPointF(40, 25);
  const double under_pointer = x.PixelToValue(place.x());

  Wheel(place, 2);
  EXPECT_NEAR(x.Max() - x.Min(), x_length * 0.64, x_length * 1e-9);
  EXPECT_NEAR(y.Max() - y.Min(), y_length * 0.64, y_length * 1e-9);
  EXPECT_NEAR(x.PixelToValue(place.x()), under_pointer, x_length * 1e-9);

  QTest::keyClick(&ActiveCanvas(), Qt::Key_Backspace);
  EXPECT_DOUBLE_EQ(x.Max() - x.Min(), x_length);
  EXPECT_DOUBLE_EQ(y.Max() - y.Min(), y_length);
  EXPECT_TRUE(x.AutoSizing());
}

TEST_F(DesktopTest, ModifiersAndAxesNarrowTheZoom) {
  Start({Example("decay.dat")});
  const TxyGraph& graph = ActiveDocument().Graph();
  const QRectF plot = ActiveCanvas().Layout().plot;
  struct Row {
    QPointF place;
    Qt::KeyboardModifiers modifiers;
    bool x_zooms;
    bool y_zooms;
  };
  const Row rows[] = {
      {plot.center(), Qt::ControlModifier, true, false},
      {plot.center(), Qt::ShiftModifier, false, true},
      {{plot.center().x(), plot.bottom() + 12}, Qt::NoModifier, true, false},
      {{plot.left() - 12, plot.center().y()}, Qt::NoModifier, false, true},
  };
  for (const Row& row : rows) {
    Run("GraphZoomAll1");
    const double x_max = graph.Axis(AxisId::X).Max();
    const double y_max = graph.Axis(AxisId::Y).Max();
    Wheel(row.place, 1, row.modifiers);
    EXPECT_EQ(graph.Axis(AxisId::X).Max() != x_max, row.x_zooms);
    EXPECT_EQ(graph.Axis(AxisId::Y).Max() != y_max, row.y_zooms);
  }
}

TEST_F(DesktopTest, TheMiddleButtonPans) {
  Start({Example("decay.dat")});
  const TAxis& x = ActiveDocument().Graph().Axis(AxisId::X);
  const QPoint place = ActiveCanvas().Layout().plot.center().toPoint();
  const double grabbed = x.PixelToValue(place.x());
  QTest::mousePress(&ActiveCanvas(), Qt::MiddleButton, {}, place);
  MoveMouse(place + QPoint(60, 0), Qt::MiddleButton);
  QTest::mouseRelease(&ActiveCanvas(), Qt::MiddleButton, {}, place + QPoint(60, 0));
  EXPECT_NEAR(x.PixelToValue(place.x() + 60), grabbed, (x.Max() - x.Min()) * 1e-9);
  Run("GraphResetZoom1");
  EXPECT_NEAR(x.PixelToValue(place.x()), grabbed, (x.Max() - x.Min()) * 1e-9);
}

TEST_F(DesktopTest, SavedAndOpenedAgainTheGraphIsTheSame) {
  Start({Example("decay.dat")});
  const auto file = folder_.File("run5.tgr");
  chooser_->to_save = {file};
  Run("FileSave1");  // no graph file yet: asks for a name
  EXPECT_EQ(ActiveDocument().Caption(), "Graph_1 ( " + file.string() + " )");
  EXPECT_FALSE(ActiveDocument().Changed());
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

TEST_F(DesktopTest, ClosingAsksBeforeChangesAreLost) {
  Start({Example("decay.dat")});
  Expect("Save changes to Graph_1 ?", Answer::Cancel);
  form_->close();
  EXPECT_TRUE(form_->isVisible());
  ASSERT_EQ(form_->GraphWindows().size(), 1u);

  // Yes without a name to save under, and no name given: the window stays too.
  Expect("Save changes to Graph_1 ?", Answer::Yes);
  Run("FileEscExit1");
  EXPECT_EQ(form_->GraphWindows().size(), 1u);

  Expect("Save changes to Graph_1 ?", Answer::No);
  form_->close();
  EXPECT_FALSE(form_->isVisible());
}

TEST_F(DesktopTest, CloseAllNamesWhatWouldBeLost) {
  Start({Example("decay.dat"), Example("pendulum.csv")});
  ASSERT_EQ(form_->GraphWindows().size(), 2u);
  Expect("Discard changes in graph(s) \"Graph_1\", \"Graph_2\", ?", Answer::No);
  Run("FileCloseAll1");
  EXPECT_EQ(form_->GraphWindows().size(), 2u);
  Expect("Discard changes in graph(s) \"Graph_1\", \"Graph_2\", ?", Answer::Yes);
  Run("FileCloseAll1");
  EXPECT_TRUE(form_->GraphWindows().empty());
}

TEST_F(DesktopTest, EditsAreUndoneByNameAndQuestionsNameTheDataSet) {
  Start({Example("decay.dat")});
  CommandActions& actions = form_->Actions();
  const QAction* undo = actions.ActionOf("EditUndo1");
  const QAction* redo = actions.ActionOf("EditRedo1");
  EXPECT_FALSE(undo->isEnabled() || redo->isEnabled());  // how a window begins is no step
  EXPECT_EQ(undo->text(), "&Undo");
  TxyGraph& graph = ActiveDocument().Graph();
  const QImage before = ActiveCanvas().grab().toImage();
  const std::int32_t points = graph.CurrentSeries()->PointCount();
  const std::string name = "\"Graph_1." + graph.CurrentSeries()->SeriesName() + "\" ?";

  Expect("Clear DataSet   " + name, Answer::No);
  Run("EditClearSer1");
  EXPECT_FALSE(undo->isEnabled());
  Expect("Clear DataSet   " + name, Answer::All);
  Run("EditClearSer1");
  EXPECT_FALSE(graph.HasPoints());
  EXPECT_EQ(undo->text(), "&Undo Clear All DataSets");
  Expect("Delete DataSet   " + name, Answer::Yes);
  const std::size_t count = graph.SeriesCount();
  Run("EditDeleteSeries1");
  EXPECT_EQ(graph.SeriesCount(), count - 1);
  Run("EditUndo1");
  EXPECT_EQ(graph.SeriesCount(), count);
  EXPECT_EQ(redo->text(), "&Redo Delete DataSet");
  Run("EditUndo1");
  EXPECT_EQ(graph.CurrentSeries()->PointCount(), points);
  EXPECT_FALSE(undo->isEnabled());
  EXPECT_EQ(ActiveCanvas().grab().toImage(), before);
  Run("EditRedo1");
  EXPECT_FALSE(graph.HasPoints());
}

TEST_F(DesktopTest, ALookOfTheUsersOwnIsUndoneTogetherWithItsEdit) {
  Start({Example("decay.dat")});
  const TxyGraph& graph = ActiveDocument().Graph();
  const Legend arranged = graph.GetLegend();
  const Dimensions margins = graph.GetDimensions();
  Run("GraphLegend1");
  ActiveDocument().FinishLook({300, 900});
  EXPECT_NE(graph.GetLegend().visible, arranged.visible);
  Run("EditUndo1");
  EXPECT_EQ(graph.GetLegend(), arranged);
  EXPECT_EQ(graph.GetDimensions().left_margin, margins.left_margin);
  ActiveDocument().FinishLook({100, 70});  // arranged for other sizes again
  EXPECT_NE(graph.GetDimensions().left_margin, margins.left_margin);
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

TEST_F(DesktopTest, ABadFileIsToldAndLeavesTheOthersAlone) {
  Start({Example("decay.dat")});
  const GraphState before = ActiveDocument().Graph().State();
  const auto graph = folder_.Write("broken.tgr", "not a graph at all");
  const auto text = folder_.Write("words.txt", "no numbers\nin this file\n");
  const auto gone = folder_.File("gone.dat");
  struct Row {
    std::filesystem::path file;
    std::vector<std::string> pieces;  // in the message, in this order
  };
  const Row rows[] = {
      {graph, {graph.string(), "File " + graph.string() + " has wrong format"}},
      {text, {text.string()}},
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
      from = told.front().find(piece, from);
      ASSERT_NE(from, std::string::npos) << told.front();
    }
    EXPECT_EQ(form_->GraphWindows().size(), 1u);
  }
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), before.series.size());
  EXPECT_TRUE(SameState(ActiveDocument().Graph().State().series[0].data, before.series[0].data));
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

TEST_F(DesktopTest, CommandsFollowTheActiveGraph) {
  Start({});
  CommandActions& actions = form_->Actions();
  EXPECT_FALSE(actions.ActionOf("FileSave1")->isEnabled());
  EXPECT_TRUE(actions.ActionOf("FileNew1")->isEnabled());
  Run("FileNew1");
  EXPECT_TRUE(actions.ActionOf("FileSave1")->isEnabled());
  EXPECT_FALSE(actions.ActionOf("GraphResetZoom1")->isEnabled());
  const bool legend = ActiveDocument().Graph().GetLegend().visible;
  for (const bool shown : {!legend, legend}) {
    Run("GraphLegend1");
    EXPECT_EQ(actions.ActionOf("GraphLegend1")->text(), shown ? "Hide &Legend" : "Show &Legend");
  }
}

TEST_F(DesktopTest, BehindAClosedWindowLiesTheLastOneAsItWas) {
  Start({Example("pendulum.csv"), Example("decay.dat")});
  Run("FileNew1");
  for (const int left : {2, 1}) {
    const std::string before =
        form_->GraphWindows()[static_cast<std::size_t>(left - 1)]->GetDocument().Name();
    if (left == 1) Expect("Save changes to Graph_2 ?", Answer::No);
    Run("FileClose1");
    EXPECT_EQ(ActiveDocument().Name(), before);
    EXPECT_TRUE(form_->ActiveGraphWindow()->isMaximized());
  }
}

TEST_F(DesktopTest, WindowsAreArrangedInsideTheWorkspace) {
  Start({Example("decay.dat"), Example("pendulum.csv"), Example("diode.txt")});
  struct Row {
    const char* command;
    bool apart;
    bool icons;
  };
  const Row rows[] = {{"WindowCascade1", false, false},
                      {"WindowTileHorizontal1", true, false},
                      {"WindowMinimizeAll1", true, true},
                      {"WindowTileVertical1", true, true}};  // icons stay icons
  for (const Row& row : rows) {
    SCOPED_TRACE(row.command);
    Run(row.command);
    const auto windows = form_->GraphWindows();
    for (const TGraphWindow* window : windows) {
      EXPECT_EQ(window->isMinimized(), row.icons);
      EXPECT_TRUE(window->parentWidget()->rect().contains(window->geometry()));
      for (const TGraphWindow* other : windows) {
        if (other == window || !row.apart) continue;
        EXPECT_FALSE(window->geometry().intersects(other->geometry()));
      }
    }
  }
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
  EXPECT_FALSE(ActiveDocument().Changed());
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

TEST_F(DesktopTest, SaveAsAsksBeforeItReplacesAndPassesOverUnknownExtensions) {
  Start({Example("decay.dat")});
  const auto old = folder_.Write("old.dat", "keep");
  Expect("File " + old.string() + " exists. Overwrite?", Answer::No);
  chooser_->to_save = {old};
  Run("FileSaveAs1");
  EXPECT_EQ(testing::ReadFile(old), "keep");
  const auto text = folder_.File("new.txt");
  chooser_->to_save = {text};
  Run("FileSaveAs1");
  EXPECT_FALSE(std::filesystem::exists(text));
  EXPECT_EQ(chooser_->proposed.graph_name, "decay");
}

TEST(ThreadedWorkTest, LongWorkShowsItsProgressAndCanBeCancelled) {
  QTimer::singleShot(ThreadedWork::kPatienceMs + 200, [] {
    auto* window = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->labelText(), "Loading data\nrun.dat");
    EXPECT_LE(std::abs(2 * window->value() - window->maximum()), 4);
    window->findChild<QPushButton*>()->click();
  });
  bool cancelled = false;
  ThreadedWork(nullptr).Run({"Loading data"}, [&](Progress& progress) {
    progress.Begin("Loading", "run.dat", 4000);
    for (int i = 0; i < 1000 && !cancelled; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      cancelled = !progress.Advance(2000);
    }
  });
  EXPECT_TRUE(cancelled);
}

TEST(ThreadedWorkTest, WhatTheWorkThrowsArrives) {
  EXPECT_THROW(ThreadedWork(nullptr).Run(
                   {"Loading data"}, [](Progress&) { throw FileError("no", "a.dat", "line 1"); }),
               FileError);
}

}  // namespace
}  // namespace tarnwick
