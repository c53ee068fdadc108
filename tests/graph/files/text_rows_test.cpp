// That a table of text keeps the order of lines and the gaps in them, as our own import reads it back.
#include "graph/files/text_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "graph/files/data_text_file.h"
#include "graph/files/import_into_graph.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

struct Line {
  std::vector<double> x, y;  // in the order of the line
  std::vector<std::size_t> breaks;
  bool operator==(const Line&) const = default;
};

std::vector<Line> LinesOf(const TxyGraph& graph) {
  std::vector<Line> lines;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const LineWay way = WayOf(graph.Series(i));
    lines.push_back({{}, {}, way.breaks});
    for (std::size_t place = 0; place < graph.Series(i).Points().Size(); ++place) {
      const Point point = graph.Series(i).Points().At(way.IndexAt(place));
      lines.back().x.push_back(point.x);
      lines.back().y.push_back(point.y);
    }
  }
  return lines;
}

/// Rows of X from one number to another, and Y of `columns` columns that differ on the way there and back.
std::string Sweep(int from, int to, int columns) {
  std::string text;
  const int step = from < to ? 1 : -1;
  for (int x = from; x != to + step; x += step) {
    text += std::to_string(x);
    for (int column = 1; column <= columns; ++column)
      text += "," + std::to_string((column * x * x) % 17 + (step > 0 ? 100 : 0));
    text += "\n";
  }
  return text;
}

TEST(TextRows, KeepOrdersAndGaps) {
  const struct {
    const char* what;
    std::string text;
    std::vector<std::size_t> breaks;  // of the first DataSet
  } kRows[] = {
      {"sweep there and back", "V [V],I [A]\n" + Sweep(0, 40, 1) + Sweep(39, 0, 1), {}},
      {"two columns over one sweep", "V [V],I [A],P [W]\n" + Sweep(0, 40, 2) + Sweep(39, 0, 2), {}},
      {"loop with a gap", "V [V],I [A]\n" + Sweep(0, 40, 1) + ",\n" + Sweep(30, 0, 1), {41}},
      {"empty line", "t,a\n" + Sweep(0, 39, 1) + "\n" + Sweep(60, 90, 1), {40}},
      {"row without Y", "t,a\n" + Sweep(0, 39, 1) + "40,\n" + Sweep(41, 70, 1), {40}},
      {"gap of both columns", "t,a,b\n" + Sweep(0, 39, 2) + "\n" + Sweep(60, 90, 2), {40}},
      {"gap of one column",
       "t,a,b\n" + Sweep(0, 39, 2) + "40,,3\n41,,5\n" + Sweep(42, 80, 2),
       {40}},
  };
  const testing::TemporaryFolder folder;
  for (const auto& row : kRows) {
    TxyGraph graph;
    ImportTextIntoGraph(graph, row.text, "first");
    const std::vector<Line> lines = LinesOf(graph);
    ASSERT_FALSE(lines.empty()) << row.what;
    EXPECT_EQ(lines.front().breaks, row.breaks) << row.what;
    EXPECT_EQ(LeftOutOfTable(graph), "") << row.what;
    TxyGraph of_csv, of_dat;
    ImportTextIntoGraph(of_csv, CsvText(graph), "csv");
    EXPECT_EQ(LinesOf(of_csv), lines) << row.what << "\n" << CsvText(graph);
    SaveDataText(graph, folder.File("table.dat"));
    ImportIntoGraph(of_dat, folder.File("table.dat"));
    EXPECT_EQ(LinesOf(of_dat), lines) << row.what;
  }
}

class Orders : public ::testing::Test {
 protected:
  TSeries& Add(const char* name, const std::vector<double>& x, LineOrder order) {
    TSeries& series = graph_.AddSeries(std::make_unique<TSeries>());
    series.SetSeriesName(name);
    series.SetDuplicatesAllowed(true);
    for (const double value : x) series.AddPoint(value, 2 * value);
    SeriesStyle style = series.Style();
    style.line_order = order;
    series.SetStyle(style);
    return series;
  }
  TxyGraph graph_;
};

TEST_F(Orders, DataSetsShareRowsWhereTheirOrdersAllowIt) {
  Add("up", {1, 2, 3}, LineOrder::ByX);
  Add("loop", {1, 3, 2}, LineOrder::AsTheyCame);
  Add("falling", {3, 2}, LineOrder::AsTheyCame);
  EXPECT_EQ(CsvText(graph_),
            "X Column,up,loop,falling\n1,,2,\n3,,6,6\n2,,4,4\n1,2,,\n2,4,,\n3,6,,\n");
  EXPECT_THAT(LeftOutOfTable(graph_),
              ::testing::StartsWith("The points of \"loop\" and \"up\" came"));
}

TEST_F(Orders, GapsThatOthersHideAreTold) {
  for (const char* name : {"broken", "whole"}) Add(name, {1, 2, 4, 5}, LineOrder::ByX);
  graph_.Series(0).SetGaps(PointGaps({3}, 4));
  graph_.Series(0).SetBreakAtGaps(true);
  EXPECT_THAT(LeftOutOfTable(graph_),
              ::testing::StartsWith("The line of \"broken\" is broken at 1 gap"));
  graph_.DeleteSeries(1);
  EXPECT_EQ(CsvText(graph_), "X Column,broken\n1,2\n2,4\n\n4,8\n5,10\n");
  EXPECT_EQ(LeftOutOfTable(graph_), "");
}

}  // namespace
}  // namespace tarnwick
