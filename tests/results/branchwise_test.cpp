// Tools on lines that turn back and lines that are broken.
#include "results/tools/branchwise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "base/error.h"
#include "graph/line_way.h"
#include "graph/xy_graph.h"
#include "results/area_figure.h"
#include "results/made_series.h"
#include "results/tools/recipe.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;

class Branchwise : public ::testing::Test {
 protected:
  TSeries& Add(const char* name, const std::vector<Point>& points, LineOrder order) {
    TSeries& series = graph_.AddSeries(std::make_unique<TSeries>());
    series.SetSeriesName(name);
    series.SetDuplicatesAllowed(true);
    for (const Point& point : points) series.AddPoint(point.x, point.y);
    SeriesStyle style = series.Style();
    style.line_order = order;
    series.SetStyle(style);
    return series;
  }
  /// From X = 0 to 20 at a level, and back at another.
  TSeries& AddLoop(const char* name, double up, double down) {
    std::vector<Point> points;
    for (int x = 0; x <= 20; ++x) points.push_back({0, 1.0 * x, up + x});
    for (int x = 19; x >= 0; --x) points.push_back({0, 1.0 * x, down + x});
    return Add(name, points, LineOrder::AsTheyCame);
  }
  /// Y = 1 up to X = 19, Y = 5 from X = 60 to 79, the line broken between.
  TSeries& AddBroken(const char* name) {
    std::vector<Point> points;
    for (int x = 0; x < 20; ++x) points.push_back({0, 1.0 * x, 1});
    for (int x = 60; x < 80; ++x) points.push_back({0, 1.0 * x, 5});
    TSeries& series = Add(name, points, LineOrder::ByX);
    series.SetGaps(PointGaps({21}, 40));
    series.SetBreakAtGaps(true);
    return series;
  }
  MadeSeries Make(const Tool& tool, const std::vector<TSeries*>& series,
                  const std::vector<std::pair<std::string, std::string>>& settings = {}) {
    ToolInput input{series, SettingsOf(tool, {"", {}, settings})};
    return AddMade(graph_, tool, input, {MadeName(graph_, *series[0], tool), AxisId::Y});
  }
  /// Y in the order of the line.
  static std::vector<double> YAlong(const TSeries& series) {
    std::vector<double> y;
    for (const Point& point : PointsAlong(series.Points(), WayOf(series))) y.push_back(point.y);
    return y;
  }
  TxyGraph graph_;
};

TEST_F(Branchwise, ALoopStaysALoopInWhatIsMadeOfIt) {
  TSeries& loop = AddLoop("Loop", 0, 10);
  const struct {
    const Tool& tool;
    std::vector<std::pair<std::string, std::string>> settings;
    double first, last;  // Y along the line
    const char* told;    // null: not a word of the loop
  } kRows[] = {
      {kSmoothTool, {}, 0, 10, "each of its 2 branches was taken by itself."},
      {kResampleTool, {{"step", "1"}}, 0, 10, "each of its 2 branches"},
      {kOutliersTool, {}, 0, 10, "in the order in which they came."},
      {kOutliersTool, {{"rule", "tukey"}}, 0, 10, nullptr},
      {kDifferentiateTool, {}, 1, 1, "in the order in which they came."},
      {kIntegrateTool, {}, 0.5, -195, "in the order"},  // 10 high and 20 wide, less the corner
      {kSumTool, {}, 0, 600, nullptr},
      {kNormaliseTool, {{"by", "maximum"}}, 0, 10 / 29.0, nullptr},
      {kClipTool, {{"left", "1"}}, 1, 11, nullptr},
      {kComputeTool, {{"expression", "A * 2"}}, 0, 20, "each of its 2 branches"},
      {kBackgroundTool, {{"method", "rubber-band"}}, 0, 0, "each of its 2 branches"},
      {kBackgroundTool,
       {{"method", "polynomial"}, {"degree", "0"}, {"straight", "new"}},
       -600 / 41.0,
       10 - 600 / 41.0,
       nullptr},
  };
  for (const auto& row : kRows) {
    const MadeSeries made = Make(row.tool, {&loop}, row.settings);
    const std::string what = std::string(row.tool.name) + ": " + made.told;
    EXPECT_TRUE(TurnsBack(made.series)) << what;
    const std::vector<double> y = YAlong(made.series);
    EXPECT_NEAR(y.front(), row.first, 1e-9) << what;
    EXPECT_NEAR(y.back(), row.last, 1e-9) << what;
    EXPECT_EQ(made.told.find(row.told ? row.told : "turns back") != std::string::npos,
              row.told != nullptr)
        << what;
  }
  const MadeSeries spectrum = Make(kSpectrumTool, {&loop});
  EXPECT_THAT(spectrum.told, HasSubstr("those of all branches together."));
  EXPECT_EQ(spectrum.series.Style().line_order, LineOrder::ByX);
}

TEST_F(Branchwise, DataSetsBesideALoopGoBranchByBranch) {
  TSeries& loop = AddLoop("Loop", 0, 10);
  TSeries& other = AddLoop("Other", 100, 200);
  TSeries& flat = Add("Flat", {{0, 0, 7}, {0, 20, 7}}, LineOrder::ByX);
  TSeries& hook = Add("Hook", {{0, 0, 0}, {0, 9, 1}, {0, 4, 2}, {0, 8, 3}}, LineOrder::AsTheyCame);
  std::vector<double> y = YAlong(Make(kAverageTool, {&loop, &loop, &other}).series);
  EXPECT_EQ(y.front(), 50);
  EXPECT_EQ(y.back(), 105);
  y = YAlong(Make(kComputeTool, {&loop, &flat}, {{"expression", "A + B"}}).series);
  EXPECT_EQ(y.front(), 7);
  EXPECT_EQ(y.back(), 17);
  EXPECT_THROW(Make(kComputeTool, {&loop, &hook}, {{"expression", "A + B"}}), Error);
}

TEST_F(Branchwise, NothingIsTakenAcrossAGap) {
  TSeries& broken = AddBroken("Broken");
  const struct {
    const Tool& tool;
    std::vector<std::pair<std::string, std::string>> settings;
    std::size_t points, gap;  // the place before which the result is broken
    double before, behind;    // Y beside the gap
  } kRows[] = {
      {kSmoothTool, {}, 40, 20, 1, 5},
      {kSmoothTool, {{"window", "31"}}, 40, 20, 1, 5},
      {kResampleTool, {{"step", "1"}}, 40, 20, 1, 5},
      {kResampleTool, {{"step", "0.5"}}, 78, 39, 1, 5},
      {kOutliersTool, {}, 40, 20, 1, 5},
      {kNormaliseTool, {}, 40, 20, 0, 1},
      {kComputeTool, {{"expression", "A * 2"}}, 40, 20, 2, 10},
  };
  for (const auto& row : kRows) {
    const MadeSeries made = Make(row.tool, {&broken}, row.settings);
    const std::string what = std::string(row.tool.name) + ": " + made.told;
    const std::vector<double> y = YAlong(made.series);
    ASSERT_EQ(y.size(), row.points) << what;
    EXPECT_THAT(WayOf(made.series).breaks, testing::ElementsAre(row.gap)) << what;
    EXPECT_NEAR(y[row.gap - 1], row.before, 1e-9) << what;
    EXPECT_NEAR(y[row.gap], row.behind, 1e-9) << what;
  }
  EXPECT_THAT(Make(kSmoothTool, {&broken}).told,
              HasSubstr("is broken at 1 gap: nothing was taken"));
  EXPECT_THAT(Make(kIntegrateTool, {&broken}).told, HasSubstr("this goes straight across."));
  EXPECT_THROW(Make(kSmoothTool, {&broken}, {{"window", "41"}}), Error);
  broken.SetGaps(PointGaps({3, 21}, 40));
  EXPECT_THAT(Make(kSmoothTool, {&broken}).told,
              HasSubstr("2 points left out, whose branch or piece"));
}

TEST_F(Branchwise, WhatWasMadeOfALoopIsMadeAnew) {
  TSeries& loop = AddLoop("Loop", 0, 10);
  TSeries& made = Make(kDifferentiateTool, {&loop}).series;
  loop.AddPoint(-1, 4);
  EXPECT_EQ(RecomputeAll(graph_).count, 1u);
  EXPECT_TRUE(TurnsBack(made));
  EXPECT_EQ(YAlong(made), YAlong(Make(kDifferentiateTool, {&loop}).series));
  EXPECT_EQ(YAlong(made).back(), 6);
}

TEST_F(Branchwise, AreasTellWhatTheyAre) {
  std::vector<Point> circle;
  for (int i = 0; i < 1000; ++i) {
    const double turn = 2 * std::numbers::pi * i / 1000;
    circle.push_back({0, 3 + std::cos(turn), 1e3 + std::sin(turn)});
  }
  const AreaFigure round = FindArea(Add("Circle", circle, LineOrder::AsTheyCame));
  EXPECT_NEAR(round.area, std::numbers::pi, 1e-4);
  EXPECT_THAT(round.told,
              HasSubstr("X of \"Circle\" turns back: the area is what the line encloses"));
  const AreaFigure broken = FindArea(AddBroken("Broken"));
  EXPECT_EQ(broken.area, 19 + 123 + 95);
  EXPECT_THAT(broken.told, HasSubstr("broken at 1 gap: the area goes straight across."));
  EXPECT_EQ(FindArea(Add("Plain", {{0, 1, 1}, {0, 3, 1}}, LineOrder::ByX)).told, "");
}

}  // namespace
}  // namespace tarnwick
