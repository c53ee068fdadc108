// Graph windows in their workspace: closing with its questions, arranging, commands that follow the active one.
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <algorithm>

#include "app/window/graph_popup.h"
#include "desk/commands/command_actions.h"
#include "desktop_fixture.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

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

TEST_F(DesktopTest, ThePopupMenuHoldsTheGraphsContentsThenItsCommands) {
  Start({Example("pendulum.csv")});
  Run("InsertNewGraph1");
  ActiveDocument().SelectChild(std::nullopt);
  TxyGraph& graph = ActiveDocument().Graph();
  graph.AddSeries(std::make_unique<TSeries>()).SetSeriesName("R&D");
  Mark mark;
  mark.caption = "Peak";
  AddMark(graph, mark);
  QMenu popup;
  form_->Actions().RunAsCommand(
      [&](CommandContext& context) { FillGraphPopup(popup, context, form_->Actions()); });
  QStringList shown;
  for (const QAction* action : popup.actions()) {
    shown += (action->isSeparator() ? "-- " : action->isChecked() ? "*" : "") + action->text();
  }
  EXPECT_EQ(shown.join("|").toStdString(),
            "*&1 Auslenkung [°]|&2 R&&D|-- |-- Marks|*&1 Peak|-- |"
            "-- Inserted Graphs|&1 Inserted Graph 1|-- |Zoom &Window|&All Axes|&Undo Zoom|-- |"
            "Delete &Bad Point|&Move Data Point|&Insert Data Point|-- |&Edit Graph|Show "
            "&Legend|Hide &Marks");
  popup.actions()[1]->trigger();
  EXPECT_EQ(graph.CurrentSeriesIndex(), 1);
}

TEST_F(DesktopTest, BehindAClosedWindowLiesTheLastOneAsItWas) {
  Start({Example("pendulum.csv")});
  for (const int i : {2, 3}) {
    Run("FileNew1");
    EXPECT_EQ(form_->GraphWindows().size(), static_cast<std::size_t>(i));
  }
  for (const int left : {2, 1}) {
    const std::string before =
        form_->GraphWindows()[static_cast<std::size_t>(left - 1)]->GetDocument().Name();
    Run("FileClose1");
    EXPECT_EQ(ActiveDocument().Name(), before);
    EXPECT_TRUE(form_->ActiveGraphWindow()->isMaximized());
  }
}

TEST_F(DesktopTest, TheFocusBringsNoOtherGraphToTheFront) {
  Start({Example("decay.dat"), Example("pendulum.csv"), Example("reactor_log.tsv")});
  const auto* const active = form_->ActiveGraphWindow();
  for (int round = 0; round < 2; ++round) {
    Run("AnalysisEvaluate1");
    auto& line = *form_->findChild<QLineEdit*>("e_X");
    TakeFocus(line);
    // Hidden with the focus in it; then with the focus gone all the way round by TAB.
    for (int step = 0; step < 60 * round; ++step) {
      QTest::keyClick(QApplication::focusWidget(), step < 30 ? Qt::Key_Tab : Qt::Key_Backtab);
      if (&ActiveCanvas() == QApplication::focusWidget()) line.setFocus();
      ASSERT_EQ(form_->ActiveGraphWindow(), active) << step;
    }
    Run("AnalysisEvaluate1");
    EXPECT_EQ(form_->ActiveGraphWindow(), active) << round;
    EXPECT_EQ(QApplication::focusWidget(), &ActiveCanvas()) << round;
  }
}

TEST_F(DesktopTest, SeveralFilesOpenedAtOnceAreAllSeen) {
  const auto all_seen = [this] {
    const auto windows = form_->GraphWindows();
    return std::ranges::none_of(windows, [&](const TGraphWindow* window) {
      return std::ranges::any_of(windows, [window](const TGraphWindow* other) {
        return other != window && other->geometry().intersects(window->geometry());
      });
    });
  };
  Start({Example("decay.dat"), Example("pendulum.csv")});
  EXPECT_TRUE(QTest::qWaitFor(all_seen));
  EXPECT_EQ(form_->ActiveGraphWindow()->windowTitle(), "Graph_2 - decay.dat");
  chooser_->to_open = {Example("diode.txt"), Example("reactor_log.tsv")};
  ActiveDocument().History().SetChanged(false);
  form_->ActiveGraphWindow()->showMaximized();
  Run("FileOpen1");
  EXPECT_EQ(form_->GraphWindows().size(), 4U);
  EXPECT_TRUE(all_seen());
}

TEST_F(DesktopTest, TilesFillTheWorkspaceUntilOneIsMoved) {
  Start({Example("decay.dat"), Example("pendulum.csv")});
  Run("WindowTileVertical1");
  const auto height = [this] { return form_->GraphWindows().front()->height(); };
  const int before = height();
  form_->resize(form_->size() + QSize(0, 100));
  EXPECT_TRUE(QTest::qWaitFor([&] { return height() == before + 100; })) << height();
  form_->GraphWindows().front()->move(5, 5);
  form_->resize(form_->size() + QSize(0, 50));
  QTest::qWait(50);
  EXPECT_EQ(height(), before + 100);
}

TEST_F(DesktopTest, GraphsStandBehindTabsOnRequest) {
  Start({Example("decay.dat")});
  Run("WindowTabs1");
  Run("FileNew1");
  auto* const tabs = form_->findChild<QTabBar*>();
  ASSERT_NE(tabs, nullptr);
  EXPECT_EQ(tabs->tabText(0), "Graph_1 - decay.dat");
  EXPECT_EQ(tabs->tabText(1), "Graph_2");
  EXPECT_FALSE(form_->Actions().ActionOf("WindowCascade1")->isEnabled());
  tabs->setCurrentIndex(0);
  EXPECT_EQ(ActiveDocument().Name(), "Graph_1");
  TearDown();
  SetUp();
  EXPECT_TRUE(form_->Actions().ActionOf("WindowTabs1")->isChecked());
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

}  // namespace
}  // namespace tarnwick
