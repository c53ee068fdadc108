// The finished look of a graph while picture, names or DataSets grow: margins, legend and what is told in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "graph/layout/finished_look.h"
#include "graph/layout/ruled_metrics.h"
#include "graph/layout/second_quantity.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "support/told.h"

namespace tarnwick {
namespace {

struct Wanted {
  int width = 640, height = 480;
  int series = 3;
  std::size_t letters = 8;  // of a name
  int points = 30;
  bool full = true;  // waves in every corner, else a rising line
  int second = 0;    // the last of them against Y2
};

void Fill(const Wanted& wanted, TxyGraph& graph) {
  for (int k = 0; k < wanted.series; ++k) {
    auto series = std::make_unique<TSeries>();
    std::string name = std::to_string(k);
    name.insert(name.begin(), wanted.letters - std::min(wanted.letters, name.size()), 'W');
    series->SetSeriesName(name);
    for (int i = 0; i < wanted.points; ++i)
      series->AddPoint(i, wanted.full ? std::sin(2.1 * i + k) : i + k);
    SeriesStyle style;
    style.first_axis = k < wanted.series - wanted.second;
    series->SetStyle(style);
    graph.AddSeries(std::move(series));
  }
}

std::string Told(const Wanted& wanted) {
  const testing::RuledMetrics metrics;
  TxyGraph graph;
  Fill(wanted, graph);
  graph.Resize(wanted.width, wanted.height);
  const QSizeF size(wanted.width, wanted.height);
  ApplyFinishedLook(graph, size, metrics, {.title = "Run"});
  const Dimensions& m = graph.GetDimensions();
  const Legend& legend = graph.GetLegend();
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  std::string told = "margins " + std::to_string(m.left_margin) + " " +
                     std::to_string(m.top_margin) + " " + std::to_string(m.right_margin) + " " +
                     std::to_string(m.bottom_margin) + ", legend ";
  if (!legend.visible) return told + (legend.no_room ? "has no room" : "none");
  told += std::string(legend.layout_mode == LegendLayout::Horizontal ? "above" : "") +
          (legend.room_beside > 0 ? "beside " + std::to_string(legend.room_beside) : "") +
          (legend.room_above > 0 ? " " + std::to_string(legend.room_above) : "");
  if (!layout.legend) return told + " not drawn";
  const std::size_t cut =
      static_cast<std::size_t>(std::ranges::count_if(layout.legend->rows, [](const LegendRow& row) {
        return row.name.text.text.contains(u'\u2026');
      }));
  return told + " at " + testing::Told(layout.legend->frame) + ", " +
         std::to_string(layout.legend->rows.size()) + " rows, " + std::to_string(cut) + " cut" +
         (layout.legend->more ? " and more" : "");
}

void ExpectTold(const char* name, const std::vector<int>& values,
                const std::function<void(Wanted&, int)>& set) {
  std::vector<std::string> told;
  for (const int value : values) {
    Wanted wanted;
    set(wanted, value);
    told.push_back(std::to_string(value) + ": " + Told(wanted));
  }
  testing::ExpectTold("graph/layout/finished.txt", name, told);
}

TEST(FinishedSweep, LegendsFindTheirPlaces) {
  ExpectTold("width", {120, 200, 240, 280, 300, 320, 340, 399, 400, 401, 450, 500, 600, 900, 1500},
             [](Wanted& w, int value) { w.width = value; });
  ExpectTold("width of two axes", {120, 200, 280, 399, 400, 401, 600},
             [](Wanted& w, int value) { w.width = value, w.series = 2, w.second = 1; });
  ExpectTold("height", {60, 100, 140, 180, 240, 300, 360, 420, 600, 900},
             [](Wanted& w, int value) { w.height = value, w.letters = 26; });
  ExpectTold("letters", {1, 8, 12, 13, 14, 15, 16, 20, 24, 26, 28, 30, 40, 60, 120},
             [](Wanted& w, int value) { w.letters = static_cast<std::size_t>(value); });
  ExpectTold("letters in a small picture", {1, 8, 12, 16, 20, 26, 40}, [](Wanted& w, int value) {
    w.letters = static_cast<std::size_t>(value), w.width = 270, w.height = 200;
  });
  ExpectTold("DataSets", {1, 2, 4, 5, 8, 12, 20, 30, 40, 60},
             [](Wanted& w, int value) { w.series = value; });
  ExpectTold("DataSets of long names", {1, 2, 4, 5, 6, 8, 12, 20, 40},
             [](Wanted& w, int value) { w.series = value, w.letters = 30; });
  ExpectTold("DataSets with corners", {1, 2, 4, 8, 12, 20, 40},
             [](Wanted& w, int value) { w.series = value, w.full = false; });
}

TEST(FinishedSweep, StylesFollowTheNumberOfPoints) {
  std::vector<std::string> told;
  for (const int points : {1, 79, 80, 81, 299, 300, 301, 1999, 2000, 2001}) {
    for (const int series : {1, 7, 8, 9, 30, 31}) {
      Wanted wanted{.series = series, .letters = 2, .points = points, .full = false};
      TxyGraph graph;
      Fill(wanted, graph);
      graph.Resize(640, 480);
      const testing::RuledMetrics metrics;
      ApplyFinishedLook(graph, QSizeF(640, 480), metrics);
      const SeriesStyle& last = graph.Series(graph.SeriesCount() - 1).Style();
      told.push_back(std::to_string(points) + "x" + std::to_string(series) + ": " +
                     (last.show_symbols ? "symbols of " + std::to_string(last.symbol_size) : "") +
                     " width " + std::to_string(last.line_width) + " style " +
                     std::to_string(static_cast<int>(last.line_style)));
    }
  }
  for (const int before : {0, 1, 80, 81, 300, 301, 2000, 2001}) {
    std::string line = "from " + std::to_string(before) + ":";
    for (const int now : {0, 1, 80, 81, 300, 301, 2000, 2001})
      line += LooksOtherwise(before, now) ? " other" : " same";
    told.push_back(line);
  }
  testing::ExpectTold("graph/layout/finished.txt", "styles", told);
}

TEST(FinishedSweep, QuantitiesArePartedByTheirUnits) {
  std::vector<std::string> told;
  const std::vector<std::pair<const char*, double>> pairs[] = {
      {{"T (K)", 100}, {"p (bar)", 3.9}},
      {{"T (K)", 100}, {"p (bar)", 4}},
      {{"T (K)", 100}, {"p (bar)", 4.1}},
      {{"T [ K ]", 100}, {"U [K]", 1}},
      {{"T(K)", 100}, {"U (K) ", 1}},
      {{"T / K", 100}, {"U /K", 1}},
      {{"T /K", 100}, {"p / bar", 1}},
      {{"T (K", 100}, {"p )", 1}},
      {{"a", 100}, {"b", 2.1}},
      {{"a", 100}, {"b", 2}},
      {{"a", 100}, {"b", 1.9}},
      {{"b", 1.9}, {"a", 100}},
      {{"a", 100}, {"b", 0}},
      {{"a", 100}, {"b", 1}, {"c", 0.01}},
      {{"a (s)", 100}, {"b (m)", 1}, {"c (s)", 1}, {"d (m)", 2}},
      {{"a (s)", 100}, {"b (m)", 1}, {"c (kg)", 1}},
      {{"a ()", 100}, {"b (m)", 1}}};
  for (const auto& names : pairs) {
    TxyGraph graph;
    std::string line;
    for (const auto& [name, height] : names) {
      auto series = std::make_unique<TSeries>();
      series->SetSeriesName(name);
      for (const double x : {0.0, 1.0}) series->AddPoint(x, x * height);
      graph.AddSeries(std::move(series));
      line += std::string(name) + " to " + testing::Told(height) + ", ";
    }
    SeparateQuantities(graph);
    line += "axes ";
    for (std::size_t i = 0; i < graph.SeriesCount(); ++i)
      line += YAxisOf(graph.Series(i)) == AxisId::Y ? '1' : '2';
    told.push_back(line + " " + FlatLinesText(graph));
  }
  testing::ExpectTold("graph/layout/finished.txt", "quantities", told);
}

}  // namespace
}  // namespace tarnwick
