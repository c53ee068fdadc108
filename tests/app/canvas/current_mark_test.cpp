// Which mark is the current one is seen on the graph.
#include "app/canvas/current_mark.h"

#include "desktop_fixture.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

TEST_F(DesktopTest, TheCurrentMarkHasHandles) {
  Start({Example("decay.dat")});
  TxyGraph& graph = ActiveDocument().Graph();
  std::vector<std::int32_t> marks;
  for (const MarkType type : {MarkType::Vertical, MarkType::Horizontal, MarkType::Point}) {
    Mark mark;
    mark.type = type;
    mark.x1 = 500;
    mark.y1 = 200;
    mark.x2 = 40;  // width of the point
    marks.push_back(AddMark(graph, mark));
  }
  std::vector<QImage> pictures;
  for (const std::int32_t id : marks) {
    SetCurrentMark(graph, id);
    pictures.push_back(ActiveCanvas().grab().toImage());
  }
  const QRectF plot = ActiveCanvas().Layout().plot;
  const auto differ = [&](const QImage& one, const QImage& other, QPointF place) {
    const QRect around(place.toPoint() - QPoint(30, 30), QSize(61, 61));
    return one.copy(around) != other.copy(around);
  };
  const QPointF point = ActiveCanvas().Layout().marks.back().point;
  EXPECT_TRUE(differ(pictures[0], pictures[1], {point.x(), plot.top()}));
  EXPECT_TRUE(differ(pictures[0], pictures[1], {plot.right(), point.y()}));
  EXPECT_TRUE(differ(pictures[1], pictures[2], point));
  EXPECT_FALSE(differ(pictures[0], pictures[2], {plot.right(), plot.bottom()}));
}

}  // namespace
}  // namespace tarnwick
