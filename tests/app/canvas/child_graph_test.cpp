#include <QTest>

#include <gtest/gtest.h>

#include "app/canvas/child_grip.h"
#include "desktop_fixture.h"
#include "graph/edit/child_edit.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST(ChildGrip, HandlesComeFirstAndEdgesStopBeforeTheOpposite) {
  struct Row {
    QPointF place;
    ChildGrip grip;
    TxyChildGr::Place dragged;  // by 30 to the right and 20 down
  };
  const Row rows[] = {
      {{150, 150}, ChildGrip::Body, {130, 120, 100, 100}},
      {{98, 103}, ChildGrip::TopLeft, {130, 120, 70, 80}},
      {{200, 150}, ChildGrip::Right, {100, 100, 130, 100}},
      {{150, 100}, ChildGrip::Top, {100, 120, 100, 80}},
      {{202, 202}, ChildGrip::BottomRight, {100, 100, 130, 120}},
      {{80, 150}, ChildGrip::None, {100, 100, 100, 100}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(static_cast<int>(row.grip));
    EXPECT_EQ(GripAt(QRectF(100, 100, 100, 100), row.place), row.grip);
    const TxyChildGr::Place place = Dragged({100, 100, 100, 100}, row.grip, 30, 20);
    EXPECT_EQ(QRect(place.left, place.top, place.width, place.height),
              QRect(row.dragged.left, row.dragged.top, row.dragged.width, row.dragged.height));
  }
  const TxyChildGr::Place least = Dragged({100, 100, 100, 100}, ChildGrip::Left, 900, 0);
  EXPECT_EQ(least.width, kSmallestChild);
  EXPECT_EQ(least.left + least.width, 200);
}

class ChildGraphTest : public DesktopTest {
 protected:
  QRectF Frame() {
    ActiveCanvas().repaint();
    return ActiveCanvas().WholeLayout().children.at(0).frame;
  }
  void Drag(QPointF from, QPointF to) {
    QTest::mousePress(&ActiveCanvas(), Qt::LeftButton, {}, from.toPoint());
    MoveMouse((from + to) / 2, Qt::LeftButton);
    MoveMouse(to, Qt::LeftButton);
    QTest::mouseRelease(&ActiveCanvas(), Qt::LeftButton, {}, to.toPoint());
  }
};

TEST_F(ChildGraphTest, TheGraphClickedIsTheOneWorkedOn) {
  Start({Example("pendulum.csv")});
  Document& document = ActiveDocument();
  Run("InsertNewGraph1");
  EXPECT_EQ(document.SelectedChild(), 0u);
  EXPECT_TRUE(document.Files().LoadDataFromFile(Example("decay.dat")));
  EXPECT_EQ(document.WholeGraph().SeriesCount(), 1u);
  EXPECT_EQ(document.Files().DataFileName().filename(), "pendulum.csv");  // the window's own data
  const TxyGraph& child = *document.WholeGraph().Children().at(0);
  EXPECT_EQ(child.SeriesCount(), 1u);
  const QRectF frame = Frame();
  QTest::mouseClick(&ActiveCanvas(), Qt::LeftButton, {}, {100, 300});
  EXPECT_EQ(&document.Graph(), &document.WholeGraph());
  QTest::mouseClick(&ActiveCanvas(), Qt::LeftButton, {}, frame.center().toPoint());
  EXPECT_EQ(&document.Graph(), &child);
  // The read-out is in the child's units, its pixels counted from its frame.
  const double value = document.WholeGraph().Children()[0]->Axis(AxisId::X).Min();
  MoveMouse(frame.topLeft() + QPointF(child.PixelOrigin(AxisId::X), frame.height() / 2));
  EXPECT_TRUE(StatusText("ReadOut").startsWith("Mouse X,Y: " + QString::number(value)))
      << StatusText("ReadOut").toStdString();
  const double before = document.WholeGraph().Axis(AxisId::X).Max();
  const double zoomed = child.Axis(AxisId::X).Max();
  Wheel(frame.center(), 1);
  EXPECT_LT(child.Axis(AxisId::X).Max(), zoomed);
  EXPECT_EQ(document.WholeGraph().Axis(AxisId::X).Max(), before);
  Run("GraphResetZoom1");
  EXPECT_EQ(child.Axis(AxisId::X).Max(), zoomed);
}

TEST_F(ChildGraphTest, FramesAreMovedAndSizedInStepsAndDeleted) {
  Start({Example("pendulum.csv")});
  Document& document = ActiveDocument();
  Run("InsertNewGraph1");
  const QRectF inserted = Frame();
  Drag(inserted.topLeft() + QPointF(15, 12), inserted.topLeft() + QPointF(-45, 52));
  const QRectF moved = Frame();
  EXPECT_EQ(moved, inserted.translated(-60, 40));
  Drag(moved.bottomRight(), moved.bottomRight() + QPointF(20, 30));
  EXPECT_EQ(Frame(), moved.adjusted(0, 0, 20, 30));
  EXPECT_EQ(document.History().UndoName(), "Size Inserted Graph");
  Run("EditUndo1");
  EXPECT_EQ(Frame(), moved);
  Run("EditUndo1");
  EXPECT_EQ(Frame(), inserted);
  EXPECT_EQ(document.SelectedChild(), 0u);
  for (const Qt::KeyboardModifiers modifiers :
       {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
    QTest::keyClick(&ActiveCanvas(), Qt::Key_Left, modifiers);
  }
  EXPECT_EQ(Frame(), inserted.translated(-11, 0));
  Run("EditUndo1");
  EXPECT_EQ(Frame(), inserted);
  Run("InsertNewGraph1");
  Run("InsertDelete1");
  EXPECT_EQ(document.WholeGraph().Children().size(), 1u);
  EXPECT_FALSE(document.SelectedChild());
  Expect("Clear All Inserted Graphs?", Answer::Yes);
  Run("InsertClear1");
  EXPECT_TRUE(document.WholeGraph().Children().empty());
}

TEST_F(ChildGraphTest, LegendsAreLaidOut) {
  Start({Example("reactor_log.tsv")});
  const auto box = [&] {
    ActiveCanvas().repaint();
    return ActiveCanvas().WholeLayout().legend.value();
  };
  const auto mode = [&] { return ActiveDocument().Graph().GetLegend().layout_mode; };
  for (const auto& [command, expected] : {std::pair("LegendHorizontal1", LegendLayout::Horizontal),
                                          {"LegendVertical1", LegendLayout::Vertical},
                                          {"LegendFree1", LegendLayout::Free}}) {
    Run(command);
    EXPECT_EQ(mode(), expected) << command;
    EXPECT_GE(box().rows.size(), 2u) << command;
  }
  Run("GraphLegend1");
  Run("GraphResetLegend1");
  const QPointF way = box().frame.topLeft() - ActiveCanvas().WholeLayout().plot.topLeft();
  EXPECT_LT(way.manhattanLength(), 20);
}

}  // namespace
}  // namespace tarnwick
