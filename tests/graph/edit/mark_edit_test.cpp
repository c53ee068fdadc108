#include "graph/edit/mark_edit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "data/points/point_columns.h"
#include "graph/appearance_fields.h"
#include "graph/xy_graph.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::Refusal;

Mark MakeMark(MarkType type, double x1, double y1, double x2 = 0, double y2 = 0) {
  Mark mark;
  mark.type = type;
  mark.x1 = x1;
  mark.y1 = y1;
  mark.x2 = x2;
  mark.y2 = y2;
  return mark;
}

/// A DataSet of X 1 to 4; 10 pixels a unit on axes from 1 to 11, logarithmic ones included.
TSeries& FillGraph(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  for (const double x : {1.0, 2.0, 3.0, 4.0}) series->AddPoint(x, 10 * x);
  TSeries& added = graph.AddSeries(std::move(series));
  Dimensions none;
  none.left_margin = none.right_margin = none.top_margin = none.bottom_margin = 0;
  graph.SetDimensions(none);
  graph.Resize(100, 100);
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    graph.Axis(id).SetMin(1);
    graph.Axis(id).SetMax(11);
  }
  return added;
}

TEST(MarkEdit, FreedNumbersComeBackFirstAndListenersAreTold) {
  TxyGraph graph;
  int told = 0;
  graph.SetListener([&](GraphChange change) { told += change == GraphChange::Marks; });
  for (int i = 0; i < 3; ++i) AddMark(graph, {});
  EXPECT_TRUE(DeleteMark(graph, 2));
  EXPECT_FALSE(DeleteMark(graph, 2));
  EXPECT_EQ(CurrentMark(graph)->id, 3);
  EXPECT_EQ(AddMark(graph, {}), 2);
  EXPECT_EQ(CurrentMark(graph)->caption, "2");
  EXPECT_EQ(graph.Marks().All()[1].id, 2);
  SetCurrentMark(graph, 1);
  SetCurrentMark(graph, 9);
  EXPECT_EQ(CurrentMark(graph)->id, 1);
  DeleteMark(graph, 1);
  EXPECT_EQ(CurrentMark(graph), nullptr);
  EXPECT_EQ(told, 8);
}

TEST(MarkEdit, ReadersOfFourTypesFindOneOfThem) {
  const FieldTable<Mark> fields = MarkFields();
  const auto value = [&](std::string_view key, const Mark& mark) {
    const auto field = std::ranges::find(fields, key, &Field<Mark>::key);
    const bool written = field->condition == nullptr || field->condition(mark);
    return written ? std::get<std::int32_t>(GetField(*field, mark)) : -1;
  };
  const int stand_ins[] = {0, 1, 2, 3, 2, 3, 3};
  for (int type = 0; type < 7; ++type) {
    const Mark mark = MakeMark(static_cast<MarkType>(type), 0, 0);
    EXPECT_EQ(value("TypeOfMark", mark), stand_ins[type]);
    EXPECT_EQ(value("ShapeOfMark", mark), type > 3 ? type : -1);
  }
}

TEST(MarkEdit, MarksMoveByPixelsInWhatTheirTypeUses) {
  struct Row {
    Mark mark;
    bool log;
    Mark moved;  // 10 pixels right and up
  };
  const double decade = std::pow(11.0, 0.1);  // what 10 pixels are on a logarithmic axis
  const Row rows[] = {
      {MakeMark(MarkType::Vertical, 2, 5), false, MakeMark(MarkType::Vertical, 3, 5)},
      {MakeMark(MarkType::Horizontal, 2, 5), false, MakeMark(MarkType::Horizontal, 2, 6)},
      {MakeMark(MarkType::Point, 2, 5, 8), false, MakeMark(MarkType::Point, 3, 6, 8)},
      {MakeMark(MarkType::Line, 2, 5, 4, 3), false, MakeMark(MarkType::Line, 3, 6, 5, 4)},
      {MakeMark(MarkType::Rectangle, 2, 5, 4, 3), false, MakeMark(MarkType::Rectangle, 3, 6, 5, 4)},
      {MakeMark(MarkType::Text, 2, 5, 8), false, MakeMark(MarkType::Text, 3, 6, 8)},
      {MakeMark(MarkType::Point, 2, 5, 8), true,
       MakeMark(MarkType::Point, 2 * decade, 5 * decade, 8)},
      {MakeMark(MarkType::Point, -2, NAN, 8), true, MakeMark(MarkType::Point, -2, NAN, 8)},
  };
  for (const Row& row : rows) {
    TxyGraph graph;
    FillGraph(graph);
    graph.Axis(AxisId::X).SetLogScale(row.log);
    graph.Axis(AxisId::Y).SetLogScale(row.log);
    const std::int32_t id = AddMark(graph, row.mark);
    EXPECT_TRUE(MoveMark(graph, id, {10, -10}));
    const Mark& moved = *graph.Marks().FindMark(id);
    EXPECT_NEAR(moved.x1, row.moved.x1, 1e-9);
    EXPECT_NEAR(moved.x2, row.moved.x2, 1e-9);
    EXPECT_NEAR(moved.y2, row.moved.y2, 1e-9);
    if (std::isnan(row.moved.y1)) {
      EXPECT_TRUE(std::isnan(moved.y1));
    } else {
      EXPECT_NEAR(moved.y1, row.moved.y1, 1e-9);
    }
  }
  TxyGraph empty;
  EXPECT_FALSE(MoveMark(empty, 1, {1, 1}));
}

TEST(MarkEdit, BaseLinesComeFromHorizontalAndLineMarks) {
  constexpr const char* kLinear = "Mark must be Either Linier or Horizontal";
  constexpr const char* kVertical = "Mark Can Not be a Vertical Line";
  struct Row {
    Mark mark;
    const char* refusal;
    double zero, slope;
  };
  const Row rows[] = {
      {MakeMark(MarkType::Horizontal, 9, 4), "", 4, 0},
      {MakeMark(MarkType::Line, 0, 1, 2, 5), "", 1, 2},
      {MakeMark(MarkType::Line, 3, 1, 3, 5), kVertical, 7, 8},
      {MakeMark(MarkType::Line, 3, 1, 3, 1), kVertical, 7, 8},
      {MakeMark(MarkType::Line, NAN, 1, 3, 1), kVertical, 7, 8},
      {MakeMark(MarkType::Vertical, 3, 0), kLinear, 7, 8},
      {MakeMark(MarkType::Point, 3, 1), kLinear, 7, 8},
  };
  for (const Row& row : rows) {
    TxyGraph graph;
    TSeries& series = FillGraph(graph);
    series.SetZeroValue(7);
    series.SetBaseLineSlope(8);
    AddMark(graph, row.mark);
    EXPECT_EQ(Refusal([&] { SetBaseLineFromCurrentMark(graph); }), row.refusal);
    EXPECT_EQ(series.ZeroValue(), row.zero);
    EXPECT_EQ(series.BaseLineSlope(), row.slope);
  }
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  series.SetAutoZero(true);
  SetBaseLine(series, &rows[0].mark);
  series.AddPoint(5, 1);
  EXPECT_EQ(series.ZeroValue(), 4);
}

TEST(MarkEdit, TheOriginMovesToAVerticalMark) {
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  const Mark marks[] = {MakeMark(MarkType::Vertical, 3, 0), MakeMark(MarkType::Point, 5, 1, 8),
                        MakeMark(MarkType::Line, 1, 2, 4, 3), MakeMark(MarkType::Horizontal, 5, 2)};
  for (const Mark& mark : marks) AddMark(graph, mark);
  SetCurrentMark(graph, 1);
  for (int round = 0; round < 2; ++round) {  // the second time nothing is left to move
    const DataState before = series.State();
    MoveXOriginToCurrentMark(graph);
    EXPECT_EQ(SameState(before, series.State()), round == 1);
    EXPECT_EQ(XValues(series.Points()), (std::vector<double>{-2, -1, 0, 1}));
    const std::vector<Mark>& moved = graph.Marks().All();
    EXPECT_EQ(moved[0].x1, 0);
    EXPECT_EQ(moved[1].x1, 2);
    EXPECT_EQ(moved[1].x2, 8);
    EXPECT_EQ(moved[2].x1, -2);
    EXPECT_EQ(moved[2].x2, 1);
    EXPECT_EQ(moved[3].x1, 5);
  }
  SetCurrentMark(graph, 2);
  EXPECT_EQ(Refusal([&] { MoveXOriginToCurrentMark(graph); }), "Mark must be a Vertical Line");
}

TEST(MarkEdit, WhatIsMissingIsNamedInOrder) {
  struct Row {
    bool mark, series, second_axis, deleted;
    const char* base_line;
    const char* origin;
  };
  const Row rows[] = {
      {false, false, false, false, "No Mark Selected!", "No Mark Selected!"},
      {true, false, false, false, "No DataSet Selected!", "No DataSet Selected!"},
      {true, true, true, true, "DataSet must be Plotted in Main Axes!", "No Mark Found!"},
      {true, true, false, true, "No Mark Found!", "No Mark Found!"},
  };
  for (const Row& row : rows) {
    TxyGraph graph;
    if (row.series) {
      TSeries& series = FillGraph(graph);
      SeriesStyle style = series.Style();
      style.first_axis = !row.second_axis;
      series.SetStyle(style);
    }
    if (row.mark) AddMark(graph, MakeMark(MarkType::Horizontal, 1, 1));
    if (row.deleted) DeleteMark(graph, 1);
    EXPECT_EQ(Refusal([&] { SetBaseLineFromCurrentMark(graph); }), row.base_line);
    EXPECT_EQ(Refusal([&] { MoveXOriginToCurrentMark(graph); }), row.origin);
  }
  TSeries alone;
  EXPECT_EQ(Refusal([&] { SetBaseLine(alone, nullptr); }), "No Mark Found!");
  TxyGraph graph;
  EXPECT_EQ(Refusal([&] { MoveXOrigin(graph, nullptr); }), "No Mark Found!");
}

}  // namespace
}  // namespace tarnwick
