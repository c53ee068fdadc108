// Where the parameters of a fit are printed: in the corner that hides least, line under line.
#include "results/fit_print.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/error.h"
#include "graph/axes/plot_metrics.h"
#include "graph/edit/mark_edit.h"
#include "graph/layout/plot_layout.h"
#include "graph/xy_graph.h"
#include "results/fit_colours.h"

namespace tarnwick {
namespace {

constexpr double kInset = 12, kBeforeText = 6, kSpacing = 1.8;

/// 300 points all over the picture but for one of its quarters: 1 to 4 as the corners are tried, 0 for none.
TSeries& AddCrowd(TxyGraph& graph, int empty, const char* name) {
  auto series = std::make_unique<TSeries>();
  for (int i = 0; i < 300; ++i) {
    const double x = i / 30.0, y = i * 37 % 100 / 10.0;
    const int quarter = x > 5 ? (y > 5 ? 1 : 2) : (y > 5 ? 4 : 3);
    series->AddPoint(x, quarter == empty ? 5 : y);
  }
  series->SetSeriesName(name);
  FitSettings model;
  model.Expression = "a*x+b+k";
  for (const char* parameter : {"a", "b", "k"}) {
    ParameterSettings one;
    one.Name = parameter, one.Value = 2, one.Units = "V";
    one.Vary = *parameter != 'k';
    model.parameters.push_back(one);
  }
  series->Fit().SetSettings(model, MarkModified::Yes);
  return graph.AddSeries(std::move(series));
}

TEST(PrintFit, LinesStandInTheQuietCornerUnderEachOther) {
  const TextMetrics metrics;
  for (const int empty : {1, 2, 3, 4}) {
    SCOPED_TRACE(empty);
    TxyGraph graph;
    graph.Resize(640, 480);
    Legend legend;
    legend.visible = false;
    graph.SetLegend(legend);
    TSeries& series = AddCrowd(graph, empty, "U");
    PrintFitOnGraph(graph, series);
    const PlotLayout layout = LayoutPlot(graph, {640, 480}, metrics);
    const QRectF plot = layout.plot.adjusted(kInset, kInset, -kInset, -kInset);
    const double height = kSpacing * metrics.LineHeight(graph.GetAppearance().font_for_labels);
    const double width =
        metrics.SizeOf({"a = 2 V", {}}, graph.GetAppearance().font_for_labels).width();
    const double left = empty <= 2 ? plot.right() - width - kBeforeText : plot.left();
    const double top = empty % 3 == 1 ? plot.top() : plot.bottom() - 2 * height;
    ASSERT_EQ(graph.Marks().All().size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
      const Mark& mark = graph.Marks().All()[i];
      EXPECT_EQ(mark.caption, i == 0 ? "a = 2 V" : "b = 2 V");
      EXPECT_EQ(mark.type, MarkType::Line);
      EXPECT_EQ(mark.color, series.ModelCurveColor());
      const AxisScale& x = layout.Axis(AxisId::X).scale;
      EXPECT_NEAR(x.Position(mark.x1), left, 1e-6);
      EXPECT_EQ(mark.x2, mark.x1) << "no dash before the text";
      for (const double y : {mark.y1, mark.y2})
        EXPECT_NEAR(layout.Axis(AxisId::Y).scale.Position(y),
                    top + (static_cast<double>(i) + 0.5) * height, 1e-6);
    }
  }
}

TEST(PrintFit, LinesStandWhereNoPointBandOrCurveOfAnyDataSetIs) {
  TxyGraph graph;
  graph.Resize(640, 480);
  Legend legend;
  legend.visible = false;
  graph.SetLegend(legend);
  TSeries& frame = AddCrowd(graph, 0, "U");  // all round, and nothing in the middle but a curve
  frame.Clear();
  for (int i = 0; i <= 200; ++i) {
    const double x = i / 20.0;
    for (const double y : {0.0, 1.0, 2.0, 8.0, 9.0, 10.0}) frame.AddPoint(x, y);
    if (x < 2.5 || x > 7.5) {
      for (const double y : {3.0, 4.0, 5.0, 6.0, 7.0}) frame.AddPoint(x, y);
    }
  }
  SeriesStyle style = frame.Style();
  style.connect_points = false;
  frame.SetStyle(style);
  FitSettings model = frame.Fit().Settings();
  model.Expression = "11-0*(a+b)";  // through what room is left above
  model.Status = FitStatus::cf_FinResult;
  frame.Fit().SetSettings(model, MarkModified::Yes);
  PrintFitOnGraph(graph, frame);
  const PlotLayout layout = LayoutPlot(graph, {640, 480}, TextMetrics());
  const AxisScale& x = layout.Axis(AxisId::X).scale;
  const AxisScale& y = layout.Axis(AxisId::Y).scale;
  ASSERT_EQ(layout.marks.size(), 2U);
  for (const MarkItem& mark : layout.marks) {
    ASSERT_TRUE(mark.caption);
    const QRectF box = mark.caption->Box();
    for (std::size_t i = 0; i < frame.Points().Size(); ++i) {
      const Point point = frame.Points().At(i);
      EXPECT_FALSE(box.contains(x.Position(point.x), y.Position(point.y))) << point.x;
    }
    EXPECT_FALSE(box.top() < y.Position(11) && box.bottom() > y.Position(11)) << "the curve";
  }
}

TEST(PrintFit, WritesALineAnewWhereItStandsAndNamesEachDataSetOfSeveral) {
  TxyGraph graph;
  TSeries& first = AddCrowd(graph, 0, "U");
  TSeries& second = AddCrowd(graph, 0, "I");
  SeriesStyle style = second.Style();
  style.first_axis = false;
  second.SetStyle(style);
  first.Fit().Param(3).SetPrinted(true);
  for (TSeries* series : {&first, &second}) PrintFitOnGraph(graph, *series);
  std::vector<Mark> marks = graph.Marks().All();
  ASSERT_EQ(marks.size(), 3U);
  EXPECT_EQ(marks[0].caption, "U: k = 2 V");
  EXPECT_EQ(marks[0].status, MarkStatus::XAndY);
  EXPECT_EQ(marks[2].caption, "I: b = 2 V");
  EXPECT_EQ(marks[2].status, MarkStatus::XAndY2);
  marks[2].x1 = 1, marks[2].y1 = 0.5;
  SetMark(graph, marks[2]);
  second.Fit().Param(2).SetValue(3);
  PrintFitOnGraph(graph, second);
  ASSERT_EQ(graph.Marks().All().size(), 3U);
  marks[2].caption = "I: b = 3 V";
  EXPECT_EQ(graph.Marks().All()[2], marks[2]);
  TSeries& none = graph.AddSeries(std::make_unique<TSeries>());
  EXPECT_THROW(PrintFitOnGraph(graph, none), Error);
}

TEST(PrintFit, ALinePrintedAloneNamesItsDataSetAsSoonAsAnotherIsFitted) {
  TxyGraph graph;
  TSeries& first = AddCrowd(graph, 0, "U");
  first.Fit().Param(1).SetPrinted(true);
  PrintFitOnGraph(graph, first);
  ASSERT_EQ(graph.Marks().All().size(), 1U);
  TSeries& second = AddCrowd(graph, 0, "I");
  RenewPrinted(graph, second);
  EXPECT_EQ(graph.Marks().All()[0].caption, "U: a = 2 V");
  first.Fit().Param(1).SetValue(5);
  RenewPrinted(graph, first);
  EXPECT_EQ(graph.Marks().All()[0].caption, "U: a = 5 V");
  const Color before = first.ModelCurveColor();
  for (TSeries* series : {&first, &second}) series->Fit().SetStatus(FitStatus::cf_FinResult);
  ColourFitsByDataSet(graph);
  EXPECT_NE(first.ModelCurveColor(), before);
  EXPECT_EQ(graph.Marks().All()[0].color, first.ModelCurveColor());
  graph.DeleteSeries(1);
  first.Fit().Param(1).SetValue(6);
  EXPECT_TRUE(IsPrinted(graph, first));
  RenewPrinted(graph, first);
  EXPECT_EQ(graph.Marks().All()[0].caption, "a = 6 V") << "it is the only one again";
}

}  // namespace
}  // namespace tarnwick
