#include "graph/picking.h"

#include <gtest/gtest.h>

#include <cmath>

#include "graph/read_out.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// Points at X 1, 2, 4 with the ids 1 to 3, drawn 10 pixels a unit on axes from 0 to 10.
void FillGraph(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  for (const double x : {1.0, 2.0, 4.0}) series->AddPoint(x, 10 * x);
  graph.AddSeries(std::move(series));
  Dimensions none;
  none.left_margin = none.right_margin = none.top_margin = none.bottom_margin = 0;
  graph.SetDimensions(none);
  graph.Resize(100, 100);
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    graph.Axis(id).SetMin(0);
    graph.Axis(id).SetMax(10);
  }
}

TEST(Picking, NearestPointByMidpoints) {
  struct Row {
    double x;
    int id;  // 0: nothing
  };
  TxyGraph graph;
  FillGraph(graph);
  for (const Row& row :
       {Row{-0.1, 0}, Row{0, 1}, Row{1, 1}, Row{1.5, 1}, Row{1.51, 2}, Row{2, 2}, Row{3, 2},
        Row{3.01, 3}, Row{4, 3}, Row{10, 3}, Row{10.1, 0}, Row{std::nan(""), 0}}) {
    const auto point = PickPoint(graph, row.x);
    EXPECT_EQ(point ? point->number : 0, row.id) << row.x;
  }
}

TEST(Picking, AnswersCorrectedYAndNothingWithoutPoints) {
  TxyGraph graph;
  FillGraph(graph);
  graph.Series(0).SetBaseLineSlope(1);
  EXPECT_EQ(PickPoint(graph, 4)->y, 36);
  graph.Series(0).Clear();
  EXPECT_FALSE(PickPoint(graph, 4));
  graph.DeleteSeries(0);
  EXPECT_FALSE(PickPoint(graph, 4));
}

TEST(Picking, CountsPositionsOnARegressionCurveShownAlone) {
  TxyGraph graph;
  FillGraph(graph);
  TSeries& series = graph.Series(0);
  series.SetRegressionSteps(4);
  series.SetRegressionType(RegressionType::Spline);
  EXPECT_FALSE(PickPoint(graph, 2)->on_curve);
  SeriesStyle style = series.Style();
  style.connect_points = style.show_symbols = false;
  series.SetStyle(style);
  const auto last = PickPoint(graph, 10);
  ASSERT_TRUE(last && last->on_curve);
  EXPECT_EQ(last->number, static_cast<int>(series.Regression().curve.Size()));
}

TEST(ReadOut, TextsAreFixed) {
  TxyGraph graph;
  EXPECT_EQ(MouseText(graph, 0.5, 3), "Mouse X,Y:   0.5, 3");
  FillGraph(graph);
  EXPECT_EQ(ReadOutAt(graph, 20, 50).text, "Mouse X,Y: 2, 5; pnt#2  X,Y: 2, 20");
  EXPECT_EQ(ReadOutAt(graph, -20, 50).text, "Mouse X,Y: -2, 5; Point Not Found");
  SeriesStyle style = graph.Series(0).Style();
  style.first_axis = false;
  graph.Series(0).SetStyle(style);
  EXPECT_EQ(ReadOutAt(graph, 20, 50).text, "Mouse X,Y2: 2, 5; pnt#2  X,Y2: 2, 20");
  graph.Series(0).SetErrors({{ErrorKind::Percent, 5}, {ErrorKind::Constant, 0.25}, {}, {}});
  EXPECT_EQ(PointText(graph, PickPoint(graph, 2)), "pnt#2  X,Y2: 2 \xC2\xB1 0.25, 20 \xC2\xB1 1");
  graph.Axis(AxisId::X).SetShowAsTime(true);
  EXPECT_EQ(ValueText(graph.Axis(AxisId::X), 45000.5), "2023-03-15 12:00:00");
  EXPECT_EQ(IdleReadOut(), "Mouse X,Y:   ; Point#   X,Y :        ");
}

}  // namespace
}  // namespace tarnwick
