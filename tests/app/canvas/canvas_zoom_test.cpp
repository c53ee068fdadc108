// What wheel, middle button and their modifiers do to the scales, and what the status line reads out.
#include <QStatusBar>
#include <QTest>

#include "desktop_fixture.h"
#include "graph/read_out.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST_F(DesktopTest, TheStatusLineFollowsTheMouse) {
  Start({Example("decay.dat")});
  EXPECT_EQ(StatusText("ReadOut").toStdString(), IdleReadOut());
  const QPoint place = ActiveCanvas().Layout().plot.center().toPoint();
  MoveMouse(place);
  const TxyGraph& graph = ActiveDocument().Graph();
  const auto point = PickPoint(graph, graph.Axis(AxisId::X).Scale().ValueAt(place.x()));
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
  const double under_pointer = x.Scale().ValueAt(place.x());

  Wheel(place, 2);
  EXPECT_NEAR(x.Max() - x.Min(), x_length * 0.64, x_length * 1e-9);
  EXPECT_NEAR(y.Max() - y.Min(), y_length * 0.64, y_length * 1e-9);
  EXPECT_NEAR(x.Scale().ValueAt(place.x()), under_pointer, x_length * 1e-9);

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
  const double grabbed = x.Scale().ValueAt(place.x());
  QTest::mousePress(&ActiveCanvas(), Qt::MiddleButton, {}, place);
  MoveMouse(place + QPoint(60, 0), Qt::MiddleButton);
  QTest::mouseRelease(&ActiveCanvas(), Qt::MiddleButton, {}, place + QPoint(60, 0));
  EXPECT_NEAR(x.Scale().ValueAt(place.x() + 60), grabbed, (x.Max() - x.Min()) * 1e-9);
  Run("GraphResetZoom1");
  EXPECT_NEAR(x.Scale().ValueAt(place.x()), grabbed, (x.Max() - x.Min()) * 1e-9);
}

}  // namespace
}  // namespace tarnwick
