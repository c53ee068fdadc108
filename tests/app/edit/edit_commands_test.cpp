// Undo, redo and the commands on whole DataSets, as the Edit menu has them.
#include <QAction>

#include "desk/commands/command_actions.h"
#include "desk/document/finish_look.h"
#include "desktop_fixture.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

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
  EXPECT_FALSE(HasPoints(graph));
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
  EXPECT_FALSE(HasPoints(graph));
}

TEST_F(DesktopTest, ALookOfTheUsersOwnIsUndoneTogetherWithItsEdit) {
  Start({Example("decay.dat")});
  const TxyGraph& graph = ActiveDocument().Graph();
  const Legend arranged = graph.GetLegend();
  const Dimensions margins = graph.GetDimensions();
  Run("GraphLegend1");
  FinishLook(ActiveDocument(), {300, 900});
  EXPECT_NE(graph.GetLegend().visible, arranged.visible);
  Run("EditUndo1");
  EXPECT_EQ(graph.GetLegend(), arranged);
  EXPECT_EQ(graph.GetDimensions().left_margin, margins.left_margin);
  FinishLook(ActiveDocument(), {100, 70});  // arranged for other sizes again
  EXPECT_NE(graph.GetDimensions().left_margin, margins.left_margin);
}

}  // namespace
}  // namespace tarnwick
