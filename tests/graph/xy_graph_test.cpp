#include "graph/xy_graph.h"

#include <gtest/gtest.h>

#include "graph/palette.h"
#include "graph/shown_series.h"
#include "support/scripted_prompt.h"

namespace tarnwick {
namespace {

std::unique_ptr<TSeries> MakeSeries(const std::string& name, int points, double factor = 1) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < points; ++i) {
    x.push_back(i);
    y.push_back(i * factor);
  }
  series->AddPoints(x, y);
  return series;
}

TEST(XyGraph, FirstSeriesBecomesCurrentAndIndicesFollowDeletions) {
  TxyGraph graph;
  EXPECT_EQ(graph.CurrentSeries(), nullptr);
  for (const char* name : {"a", "b", "c"}) graph.AddSeries(MakeSeries(name, 3));
  EXPECT_EQ(graph.CurrentSeriesIndex(), 0);
  EXPECT_EQ(graph.Series(1).Style().line_color, PaletteColor(1));
  EXPECT_EQ(PaletteSymbol(kPaletteSize), PaletteSymbol(1));  // the same colour, another shape
  graph.SetCurrentSeriesIndex(2);
  graph.SetCurrentSeriesIndex(7);
  graph.DeleteSeries(0);
  EXPECT_EQ(graph.CurrentSeries()->SeriesName(), "c");
  EXPECT_EQ(XSource(graph)->SeriesName(), "b");
  graph.DeleteSeries(1);
  EXPECT_EQ(graph.CurrentSeries()->SeriesName(), "b");
  graph.DeleteSeries(0);
  EXPECT_EQ(graph.CurrentSeriesIndex(), -1);
}

TEST(XyGraph, ScalesFollowTheVisibleDataOfEachAxis) {
  TxyGraph graph;
  graph.AddSeries(MakeSeries("small", 11, 0.5));
  TSeries& large = graph.AddSeries(MakeSeries("large", 11, 1000));
  EXPECT_GE(graph.Axis(AxisId::Y).Max(), 10000);
  SeriesStyle style = large.Style();
  style.first_axis = false;
  graph.Axis(AxisId::Y2).SetAutoSizing(true);
  large.SetStyle(style);
  EXPECT_LT(graph.Axis(AxisId::Y).Max(), 10);
  EXPECT_GE(graph.Axis(AxisId::Y2).Max(), 10000);
  style.visible = false;
  large.SetStyle(style);
  EXPECT_FALSE(AxisInUse(graph, AxisId::Y2));
  graph.Series(0).SetErrors({{ErrorKind::Constant, 30}, {ErrorKind::Constant, 70}, {}, {}});
  EXPECT_LE(graph.Axis(AxisId::Y).Min(), -30);
  EXPECT_GE(graph.Axis(AxisId::X).Max(), 80);
  graph.Series(0).AddPoint(100, 50);
  EXPECT_GE(graph.Axis(AxisId::X).Max(), 100);
  EXPECT_EQ(graph.ScaleError(), "");
}

TEST(XyGraph, TitlesComeFromColumnsUpToThree) {
  TxyGraph graph;
  for (const char* name : {"A", "B", "B", "C", "D"}) {
    auto series = MakeSeries(name, 2);
    series->Source().XDataColumn = "Time";
    graph.AddSeries(std::move(series));
  }
  EXPECT_EQ(graph.Axis(AxisId::X).Look().Title, "Time");
  EXPECT_EQ(graph.Axis(AxisId::Y).Look().Title, "value");
  graph.Series(4).Source().YDataColumn = "A";
  graph.UpdateScales();
  EXPECT_EQ(graph.Axis(AxisId::Y).Look().Title, "A, B, C");
  EXPECT_EQ(graph.Axis(AxisId::Y2).Look().Title, "Y2 axis");
  graph.Series(0).Source().YDataColumn = "Volts";
  graph.UpdateScales();
  EXPECT_EQ(graph.Axis(AxisId::Y).Look().Title, "value");
}

TEST(XyGraph, TooManyPointsAreAskedAboutOnce) {
  const std::string text =
      "Maximum number of plotted points = 30000  was exceeded for dataSet \"big\".\n"
      "To fix, change Hit Frequency to the automatic mode?";
  TxyGraph graph;
  for (const int points : {30000, 30001, 30001, 30002}) {
    graph.AddSeries(MakeSeries("big", points)).Source().AutoRowHitFreq = false;
  }
  std::vector<TSeries*> reloaded;
  const auto settle = [&](const std::vector<Answer>& answers) {
    reloaded.clear();
    testing::ScriptedPrompt prompt;
    for (const Answer answer : answers) prompt.Expect(text, answer);
    graph.SettleTooManyPoints(prompt, [&](TSeries& series) { reloaded.push_back(&series); });
  };
  settle({Answer::No, Answer::YesToAll});
  EXPECT_EQ(reloaded, (std::vector{&graph.Series(2), &graph.Series(3)}));
  EXPECT_FALSE(graph.Series(1).Source().AutoRowHitFreq);
  EXPECT_TRUE(graph.Series(3).Source().AutoRowHitFreq);
  settle({});
  EXPECT_TRUE(reloaded.empty());
}

TEST(XyGraph, StateGoesOutAndInAgain) {
  TxyGraph graph;
  graph.AddSeries(MakeSeries("a", 5));
  graph.AddSeries(MakeSeries("b", 7));
  graph.SetCurrentSeriesIndex(1);
  graph.Marks().AddMark({});
  graph.AddChild().AddSeries(MakeSeries("inner", 3));
  graph.Axis(AxisId::X).SetMax(3.5);
  const GraphState before = graph.State();
  graph.DeleteSeries(0);
  graph.Series(0).Clear();
  graph.Marks().ClearMarks();
  graph.DeleteChild(0);
  int told = 0;
  graph.SetListener([&](GraphChange change) {
    ++told;
    EXPECT_EQ(change, GraphChange::Everything);
  });
  graph.SetState(before);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(graph.SeriesCount(), 2U);
  EXPECT_EQ(graph.Series(1).PointCount(), 7);
  EXPECT_TRUE(graph.Series(1).Points().SharesAllWith(before.series[1].data.points));
  EXPECT_EQ(graph.CurrentSeries()->SeriesName(), "b");
  EXPECT_EQ(graph.Marks(), before.marks);
  EXPECT_EQ(graph.Children().at(0)->Series(0).PointCount(), 3);
  EXPECT_EQ(graph.Axis(AxisId::X).Max(), 3.5);
}

TEST(XyGraph, XSourceIsNotDrawnWhileTheViewPlotsAgainstIt) {
  TxyGraph graph;
  graph.AddSeries(MakeSeries("x", 3));
  graph.AddSeries(MakeSeries("y", 3));
  EXPECT_TRUE(IsDrawn(graph, graph.Series(0)));
  graph.SetPlotsAgainstXSource(true);
  EXPECT_FALSE(IsDrawn(graph, graph.Series(0)));
  EXPECT_TRUE(IsDrawn(graph, graph.Series(1)));
}

}  // namespace
}  // namespace tarnwick
