#include "graph/edit/point_edit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "graph/xy_graph.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::Refusal;

/// "Volts": X 1, 2, 4 with Y 10, 20, 40 and the ids 1 to 3.
TSeries& FillGraph(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName("Volts");
  for (const double x : {1.0, 2.0, 4.0}) series->AddPoint(x, 10 * x);
  return graph.AddSeries(std::move(series));
}

std::string PointsText(const TSeries& series) {
  std::string text;
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    const Point point = series.Points().At(i);
    text += std::to_string(point.id) + ":" + std::to_string(std::lround(point.x)) + "," +
            std::to_string(std::lround(point.y)) + " ";
  }
  return text;
}

TEST(PointEdit, MovedPointsKeepTheirIdsAndTheOrderOfX) {
  struct Row {
    std::int32_t id;
    PlotPoint to;
    bool duplicates;
    const char* points;
  };
  const Row rows[] = {{2, {2, 5}, false, "1:1,10 2:2,5 3:4,40 "},    // straight down
                      {1, {9, 0}, false, "2:2,20 3:4,40 1:9,0 "},    // behind all others
                      {3, {-1, 1}, false, "3:-1,1 1:1,10 2:2,20 "},  // before all others
                      {1, {4, 7}, false, "2:2,20 1:4,7 "},  // onto another, whose place it takes
                      {1, {4, 7}, true, "2:2,20 1:4,7 3:4,40 "},     // or stands beside it
                      {4, {1, 1}, false, "1:1,10 2:2,20 3:4,40 "}};  // no such point
  for (const Row& row : rows) {
    TxyGraph graph;
    TSeries& series = FillGraph(graph);
    series.SetDuplicatesAllowed(row.duplicates);
    PointErrors errors{{ErrorKind::Column, 0}, {}, {}, {}};
    for (const int id : {1, 2, 3}) errors.y_values.Set(id, id);
    series.SetErrors(errors);
    EXPECT_EQ(MovePoint(graph, series, row.id, row.to), row.id != 4);
    EXPECT_EQ(PointsText(series), row.points);
    for (std::size_t i = 0; i < series.Points().Size(); ++i) {
      const Point point = series.Points().At(i);
      EXPECT_EQ(YErrorAt(series, point), point.id);
      EXPECT_EQ(point.regression, 0);  // there is none
    }
  }
}

TEST(PointEdit, AMovedPointBringsFiguresAndScalesUpToDate) {
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  series.Fit().SetResult(std::make_shared<const FitResult>());
  MovePoint(graph, series, 3, {3, 15});
  EXPECT_TRUE(series.Fit().Last().points_changed);
  const Extremes extremes{1, 3, 10, 20};
  EXPECT_EQ(series.GetExtremes(), extremes);
  EXPECT_LT(graph.Axis(AxisId::X).Max(), 4);
  series.SetZeroValue(100);
  series.SetBaseLineSlope(2);
  MovePoint(graph, series, 3, {3, 15});
  EXPECT_EQ(*GetY(series, 3), 121);
  EXPECT_EQ(InsertPoint(series, {2.5, 0}), 4);
  EXPECT_EQ(*GetY(series, 4), 105);
}

TEST(PointEdit, AMoveAmongManyPointsCopiesButItsNeighbours) {
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  const std::vector<double> more(50'000, 7);
  series.SetDuplicatesAllowed(true);
  series.AddPoints(more, more);
  const DataState before = series.State();
  MovePoint(graph, series, 30'000, {7, 8});
  std::set<const double*> old_chunks;
  before.points.ForEachChunk([&](const ChunkView& chunk) { old_chunks.insert(chunk.x.data()); });
  std::size_t copied = 0;
  series.Points().ForEachChunk(
      [&](const ChunkView& chunk) { copied += old_chunks.contains(chunk.x.data()) ? 0 : 1; });
  EXPECT_LE(copied, 10u);
  EXPECT_GT(old_chunks.size(), 90u);
}

TEST(PointEdit, PlacesThatAnAxisCannotShowAreRefused) {
  constexpr const char* kNegative = "Can not Move to Negative Values in Log Scale!";
  constexpr const char* kNotFinite = "A point needs a finite X and Y";
  struct Row {
    bool log_x, log_y, log_y2;
    PlotPoint to;
    const char* refusal;
  };
  const Row rows[] = {
      {false, false, false, {-1, -1}, ""},
      {true, false, false, {-1, 1}, kNegative},
      {true, false, false, {1, -1}, ""},
      {false, true, false, {1, -1}, kNegative},
      {false, true, false, {1, 0}, kNegative},
      {false, false, true, {1, -1}, ""},  // not the DataSet's axis
      {false, false, false, {std::nan(""), 1}, kNotFinite},
      {false, false, false, {1, INFINITY}, kNotFinite},
  };
  for (const Row& row : rows) {
    TxyGraph graph;
    TSeries& series = FillGraph(graph);
    graph.Axis(AxisId::X).SetLogScale(row.log_x);
    graph.Axis(AxisId::Y).SetLogScale(row.log_y);
    graph.Axis(AxisId::Y2).SetLogScale(row.log_y2);
    EXPECT_EQ(Refusal([&] { MovePoint(graph, series, 1, row.to); }), row.refusal);
    const bool refused = *row.refusal != 0;
    EXPECT_EQ(PointsText(series) == "1:1,10 2:2,20 3:4,40 ", refused);
  }
}

TEST(PointEdit, PointsAreInsertedIntoManualDataSetsOnly) {
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  EXPECT_EQ(InsertPoint(series, {3, 1}), 4);
  EXPECT_EQ(InsertPoint(series, {2, 7}), 2);  // overwritten
  EXPECT_EQ(PointsText(series), "1:1,10 2:2,7 4:3,1 3:4,40 ");
  series.Source().DataSource = DataSourceKind::Text;
  EXPECT_EQ(Refusal([&] {
              InsertPoint(series, {9, 9});
            }),
            "This option is valid only for dataSet with manual source");
  EXPECT_EQ(series.PointCount(), 4);
}

TEST(PointEdit, QuestionsNameDataSetNumberAndValues) {
  TxyGraph graph;
  TSeries& series = FillGraph(graph);
  series.SetZeroValue(5);
  EXPECT_EQ(DeletePointQuestion(graph, series, 2), "Delete Point Volts.# 2  X,Y: 2, 15 ?");
  EXPECT_EQ(MovePointQuestion(graph, series, 2, {2.5, -1}),
            "Move Point Volts.# 2  X,Y: 2, 15 to 2.5, -1 ?");
  SeriesStyle style = series.Style();
  style.first_axis = false;
  series.SetStyle(style);
  EXPECT_EQ(DeletePointQuestion(graph, series, 1), "Delete Point Volts.# 1  X,Y2: 1, 5 ?");
  EXPECT_EQ(DeletePointQuestion(graph, series, 9), "");
  EXPECT_EQ(MovePointQuestion(graph, series, 9, {}), "");
}

TEST(PointEdit, WhateverBecameOfPointsIsFoundAndPutBack) {
  struct Row {
    const char* what;
    void (*edit)(const TxyGraph&, TSeries&);
    std::vector<PointFate> fates;
  };
  using enum PointFate;
  const Row rows[] = {{"nothing", [](const TxyGraph&, TSeries&) {}, {}},
                      {"Y and X, beyond another",
                       [](const TxyGraph& graph, TSeries& series) {
                         series.SetY(1, -1);
                         MovePoint(graph, series, 2, {9, 20});
                       },
                       {Changed, Moved}},
                      {"taken away and added",
                       [](const TxyGraph&, TSeries& series) {
                         DeletePoints(series, 1, 7);
                         series.AddPoint(2, 21);
                         series.AddPoint(0, std::nan(""));
                       },
                       {Added, Removed, Added, Removed}},
                      {"Y from a place on, and back",
                       [](const TxyGraph&, TSeries& series) {
                         EXPECT_EQ(OverwriteY(series, 1, std::vector<double>{7, 8, 9}), 2U);
                         EXPECT_EQ(OverwriteY(series, 2, std::vector<double>{40}), 1U);
                       },
                       {Changed}},
                      {"shifted as a whole",
                       [](const TxyGraph&, TSeries& series) { series.ShiftX(1); },
                       {Moved, Moved, Moved}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    TxyGraph graph;
    TSeries& series = FillGraph(graph);
    PointErrors errors{{ErrorKind::Column, 0}, {}, {}, {}};
    errors.y_values.Set(2, 0.5);
    series.SetErrors(errors);
    const PointChain as_read = series.Points();
    row.edit(graph, series);
    const auto changes = ChangesBetween(as_read, series.Points(), 100);
    std::vector<PointFate> fates;
    for (const PointChange& change : *changes) fates.push_back(change.fate);
    EXPECT_EQ(fates, row.fates);
    EXPECT_EQ(ChangesBetween(as_read, series.Points(), 1).has_value(), row.fates.empty());
    PutBack(series, *changes, errors);
    EXPECT_EQ(PointsText(series), "1:1,10 2:2,20 3:4,40 ");
    EXPECT_EQ(series.Errors(), errors);
    const Extremes extremes{1, 4, 10, 40};
    EXPECT_EQ(series.GetExtremes(), extremes);
  }
  // A DataSet that has given fewer ids gives none twice.
  TxyGraph graph;
  TSeries& read = FillGraph(graph);
  for (const bool whole : {false, true}) {
    TSeries& fresh = graph.AddSeries(std::make_unique<TSeries>());
    const auto changes = ChangesBetween(read.Points(), fresh.Points(), 100);
    whole ? PutBackAll(fresh, read.Points(), read.LastId(), {}) : PutBack(fresh, *changes, {});
    fresh.AddPoint(9, 9);
    EXPECT_EQ(PointsText(fresh), "1:1,10 2:2,20 3:4,40 4:9,9 ");
  }
  // What has no Y is not changed by that alone.
  read.AddPoint(5, std::nan(""));
  const PointChain with_none = read.Points();
  read.SetY(1, 7);
  EXPECT_EQ(ChangesBetween(with_none, read.Points(), 100)->size(), 1U);
}

}  // namespace
}  // namespace tarnwick
