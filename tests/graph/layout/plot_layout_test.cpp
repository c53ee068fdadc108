#include "graph/layout/plot_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "graph/layout/finished_look.h"
#include "graph/layout/plot_layout_parts.h"
#include "graph/layout/second_quantity.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

struct Scene {
  const char* name;
  double x_min, x_max, y_min, y_max;
  bool log_x = false;
  bool log_y = false;
  bool dates = false;
  bool second = false;
  bool crossing = false;
};

constexpr Scene kScenes[] = {
    {"plain", 0, 10, -3, 120},
    {"tiny", 0, 3e-9, -2e-7, 5e-7},
    {"huge", -4e12, 6e12, 1e15, 4e15},
    {"offset", 1e6, 1e6 + 0.001, 123456.78, 123456.79},
    {"log", 1e-3, 1e3, 2, 60, true, true},
    {"many decades", 1e-12, 1e9, 1e-30, 1e40, true, true},
    {"dates", 45000, 45300, 0, 1, false, false, true},
    {"second axis", 0, 10, 0, 1e5, false, false, false, true},
    {"crossing", -5, 5, -1, 1, false, false, false, false, true},
};

void FillScene(const Scene& scene, TxyGraph& graph) {
  constexpr int kPoints = 20;
  for (const bool second : {false, true}) {
    if (second && !scene.second) break;
    auto series = std::make_unique<TSeries>();
    for (int i = 0; i < kPoints; ++i) {
      const double part = i / (kPoints - 1.0);
      series->AddPoint(scene.x_min + part * (scene.x_max - scene.x_min),
                       scene.y_min + part * part * (scene.y_max - scene.y_min));
    }
    series->Source().XDataColumn = "Elapsed time of the measurement (s)";
    series->Source().YDataColumn = second ? "Pressure" : "Intensity";
    SeriesStyle style;
    style.first_axis = !second;
    series->SetStyle(style);
    graph.AddSeries(std::move(series));
  }
  TAxis& x = graph.Axis(AxisId::X);
  x.SetLogScale(scene.log_x);
  x.SetAutoSizing(true);
  graph.Axis(AxisId::Y).SetLogScale(scene.log_y);
  graph.Axis(AxisId::Y).SetAutoSizing(true);
  x.SetShowAsTime(scene.dates);
  if (scene.dates) {
    x.SetDateTickType(DateTickType::Month);
    SetLook(x, &AxisLook::DateTimeFormat, "dd mmmm yyyy");
  }
  if (scene.crossing) {
    SetLook(x, &AxisLook::Offset_type, OffsetType::Value);
    SetLook(graph.Axis(AxisId::Y), &AxisLook::Offset_type, OffsetType::Value);
  }
}

class LayoutSweep : public ::testing::TestWithParam<Scene> {};

TEST_P(LayoutSweep, FinishedLookShowsLabelsAndTitlesOfEveryAxis) {
  const TextMetrics metrics;
  const QSizeF size(800, 600);
  TxyGraph graph;
  DefaultAppearance(graph, "Graph_1");
  FillScene(GetParam(), graph);
  graph.Resize(800, 600);
  ApplyFinishedLook(graph, size, metrics, {"Data"});
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  EXPECT_TRUE(layout.title.has_value());
  for (const AxisLayout& axis : layout.axes) {
    if (!axis.shown) continue;
    EXPECT_GE(axis.labels.size(), 3U);
    EXPECT_TRUE(axis.title.has_value());
  }
  EXPECT_EQ(layout.axes[2].shown, GetParam().second);
  EXPECT_EQ(layout.legend.has_value(), GetParam().second);
  // A hidden legend has its place, too: once it lay on the Y axis when it was shown.
  Legend legend = graph.GetLegend();
  legend.visible = true;
  graph.SetLegend(legend);
  const PlotLayout shown = LayoutPlot(graph, size, metrics);
  ASSERT_TRUE(shown.legend.has_value());
  EXPECT_GT(shown.legend->frame.left(), shown.plot.left());
}

INSTANTIATE_TEST_SUITE_P(Scenes, LayoutSweep, ::testing::ValuesIn(kScenes), [](const auto& scene) {
  std::string name = scene.param.name;
  std::erase(name, ' ');
  return name;
});

TEST(SeparateQuantities, WhatWouldLookFlatGetsTheSecondAxis) {
  struct Row {
    std::vector<std::pair<const char*, double>> names_and_heights;
    const char* axes;       // of each DataSet
    double from = 0;        // of the last one
    std::string flat = {};  // is told
  };
  const Row rows[] = {{{{"p (bar)", 1}, {"T (K)", 1001}}, "12", 1000},
                      {{{"T (K)", 300}, {"p (bar)", 0.1}}, "12"},
                      {{{"p [bar]", 0.1}, {"T / K", 300}, {"q / bar", 0.2}}, "121"},
                      {{{"T (K)", 300}, {"p (bar)", 200}}, "11"},
                      {{{"T (K)", 300}, {"dT (K)", 0.1}}, "12"},
                      {{{"T (K)", 300}, {"p", 7}}, "11"},
                      {{{"a", 0.1}, {"b", 300}, {"c", 0.2}, {"still", 0}}, "1211"},
                      {{{"T (K)", 300}, {"p (bar)", 0.1}, {"U (V)", 0.1}}, "122"},
                      {{{"run", 100}, {"run", 0.01}, {"run", 90}}, "111"},
                      {{{"run", 100}, {"run", 0.01}, {"U", 0.01}}, "112"},
                      {{{"a", 4e-5}, {"b", 1e6}, {"c", 20}}, "122", 0, "\"c\" looks flat"}};
  for (const Row& row : rows) {
    TxyGraph graph;
    for (const auto& [name, height] : row.names_and_heights) {
      auto series = std::make_unique<TSeries>();
      series->SetSeriesName(name);
      if (series->SeriesName() == "run") {
        series->Source().DatasourceInfo = "map.dat";
        series->Source().YDataColumn = "latitude";
      }
      const double from = name == row.names_and_heights.back().first ? row.from : 0;
      for (const double x : {0.0, 1.0}) series->AddPoint(x, from + x * (height - from));
      graph.AddSeries(std::move(series));
    }
    SeparateQuantities(graph);
    std::string axes;
    for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
      axes += YAxisOf(graph.Series(i)) == AxisId::Y ? '1' : '2';
    }
    EXPECT_EQ(axes, row.axes) << row.names_and_heights.back().first;
    EXPECT_EQ(FlatLinesText(graph).substr(0, row.flat.size()), row.flat);
    EXPECT_EQ(FlatLinesText(graph).empty(), row.flat.empty()) << row.axes;
  }
}

TEST(PlotLayout, LegendKeepsToItsShareAndCountsTheRest) {
  const TextMetrics metrics;
  TxyGraph graph;
  for (int i = 0; i < 40; ++i) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName(
        "A DataSet with a name that no legend has room for in any font, be it "
        "as narrow and small as a label may become, number " +
        std::to_string(i));
    series->AddPoint(i, i);
    graph.AddSeries(std::move(series));
  }
  graph.Resize(500, 400);
  for (const LegendLayout mode :
       {LegendLayout::Vertical, LegendLayout::Horizontal, LegendLayout::Free}) {
    Legend legend = graph.GetLegend();
    legend.layout_mode = mode;
    legend.height = 100;
    legend.left = -5;
    legend.y_margin = 9;
    graph.SetLegend(legend);
    const PlotLayout layout = LayoutPlot(graph, QSizeF(500, 400), metrics);
    ASSERT_TRUE(layout.legend && layout.legend->more);
    EXPECT_EQ(layout.legend->more->text.text.toStdString(),
              "+" + std::to_string(40 - layout.legend->rows.size()) + " more");
    const QRectF& frame = layout.legend->frame;
    EXPECT_TRUE(QRectF(0, 0, 500, 400).contains(frame));
    for (const LegendRow& row : layout.legend->rows) {
      EXPECT_TRUE(frame.contains(row.name.Box()));
    }
    // As many lines as there is room for.
    const double line = metrics.LineHeight(legend.font) + 2;
    const double height = mode == LegendLayout::Free ? 100 : 0.6 * layout.plot.height();
    const double last_line = std::floor((height - 2 * 9) / line) - 0.5;
    EXPECT_NEAR(layout.legend->more->center.y(), frame.top() + 9 + last_line * line, 1e-9);
  }
}

TEST(PlotLayout, SurvivesEveryHostileSetting) {
  constexpr int kHuge = std::numeric_limits<std::int32_t>::max();
  const TextMetrics metrics;
  TxyGraph graph;
  FillScene(kScenes[0], graph);
  Mark mark;
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {
    mark.x1 = mark.y1 = mark.x2 = mark.y2 = value;
    for (const MarkType type :
         {MarkType::Vertical, MarkType::Horizontal, MarkType::Point, MarkType::Line, MarkType::Text,
          MarkType::Arrow, MarkType::Rectangle}) {
      mark.type = type;
      graph.Marks().AddMark(mark);
    }
  }
  for (const int margin : {-kHuge - 1, -1000, 300, kHuge}) {
    Dimensions dimensions;
    dimensions.left_margin = dimensions.top_margin = margin;
    dimensions.tick_length = dimensions.x_axis_label_offset = dimensions.y_axis_title_offset =
        margin;
    graph.SetDimensions(dimensions);
    Legend legend;
    legend.left = legend.top = legend.width = legend.height = legend.x_margin = margin;
    graph.SetLegend(legend);
    for (const int size : {0, 1, 400}) {
      graph.Resize(size, size);
      EXPECT_EQ(LayoutPlot(graph, QSizeF(size, size), metrics).size, QSizeF(size, size));
    }
  }
}

TEST(PlotLayout, SaysWhatKeepsThePlotAway) {
  const TextMetrics metrics;
  TxyGraph graph;
  const auto message = [&] {
    const PlotLayout layout = LayoutPlot(graph, QSizeF(640, 480), metrics);
    return layout.message ? layout.message->text.text.toStdString() : "";
  };
  EXPECT_EQ(message(), "Waiting for the data...");
  FillScene(kScenes[0], graph);
  EXPECT_EQ(message(), "");
  graph.Axis(AxisId::Y).SetMin(1e9);
  EXPECT_EQ(message(), "MAX/MIN VALUES INCONSISTENT");
}

}  // namespace
}  // namespace tarnwick
