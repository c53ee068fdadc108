#include "graph/model_curve.h"

#include <gtest/gtest.h>

#include <cmath>

#include "data/points/point_columns.h"
#include "graph/layout/plot_layout.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

FitSettings Model(const std::string& expression) {
  FitSettings model;
  model.Expression = expression;
  model.Status = FitStatus::cf_Function;
  model.parameters.resize(1);
  model.parameters[0].Name = "a";
  model.parameters[0].Value = 2;
  model.NPoints = 5;
  return model;
}

TEST(ModelCurve, TakesItsAbscissaeFromTheSpan) {
  struct Row {
    const char* name;
    CurveSpan span;
    std::vector<double> x;
  };
  const Row rows[] = {
      {"linear", {-1, 3}, {-1, 0, 1, 2, 3}},
      {"geometric", {0.01, 100, CurveSpacing::Geometric}, {0.01, 0.1, 1, 10, 100}},
      {"no extent", {2, 2}, {}},
      {"turned", {3, 1}, {}},
      {"not above zero", {0, 100, CurveSpacing::Geometric}, {}},
      {"not finite", {0, INFINITY}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ModelCurve curve;
    curve.Update(Model("a*x"), row.span);
    const std::vector<double> x = XValues(curve.Points());
    ASSERT_EQ(x.size(), row.x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
      EXPECT_NEAR(x[i], row.x[i], 1e-12 * std::abs(row.x[i]));
      EXPECT_DOUBLE_EQ(curve.Points().At(i).y, 2 * x[i]);
    }
  }
}

TEST(ModelCurve, BreaksWhereTheModelHasNoValue) {
  struct Row {
    const char* expression;
    int defined;
  };
  const Row rows[] = {
      {"sqrt(x)", 3}, {"a div round(x)", 4}, {"0*random+sqrt(x)", 3}, {"unknown*x", 0}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.expression);
    ModelCurve curve;
    curve.Update(Model(row.expression), {-2, 2});
    int defined = 0;
    curve.Points().ForEachPoint([&](double, double y) { defined += !std::isnan(y); });
    EXPECT_EQ(curve.Error(), "");
    EXPECT_EQ(curve.Points().Size(), 5u);
    EXPECT_EQ(defined, row.defined);
  }
}

class CurveOfAGraph : public ::testing::Test {
 protected:
  CurveOfAGraph() {
    auto added = std::make_unique<TSeries>();
    added->SetSeriesName("Rate");
    for (int i = 1; i <= 20; ++i) added->AddPoint(i, i * i);
    added->Fit().SetSettings(Model("a*x"), MarkModified::Yes);
    series_ = &graph_.AddSeries(std::move(added));
  }
  std::vector<std::string> LegendNames() {
    std::vector<std::string> names;
    const PlotLayout layout = LayoutPlot(graph_, {640, 480}, TextMetrics());
    for (const LegendRow& row : layout.legend->rows) {
      names.push_back(row.name.text.text.toStdString());
    }
    return names;
  }

  TxyGraph graph_;
  TSeries* series_ = nullptr;
};

TEST_F(CurveOfAGraph, FollowsModelDataAxisAndMargins) {
  TAxis& x = graph_.Axis(AxisId::X);
  const PointChain& points = series_->Curve().Points();
  EXPECT_EQ(points.Front().x, 1) << "not where the axis begins";
  EXPECT_EQ(points.At(points.Size() - 1).y, 2 * 20);

  series_->Fit().Param(1).SetValue(-1);
  EXPECT_EQ(points.At(points.Size() - 1).y, -20);

  x.SetMax(7);
  EXPECT_EQ(points.LastX(), 7);

  series_->Fit().SetRightMarginUsed(true);
  series_->Fit().SetRightMargin(6);
  EXPECT_EQ(points.LastX(), 6);

  x.SetLogScale(true);
  EXPECT_NEAR(points.At(1).x / points.At(0).x, points.At(2).x / points.At(1).x, 1e-9);

  series_->Fit().SetStatus(FitStatus::cf_None);
  EXPECT_TRUE(points.Empty());
}

TEST_F(CurveOfAGraph, IsNamedInTheLegendWhileItIsShown) {
  EXPECT_EQ(LegendNames(), (std::vector<std::string>{"Rate", "Model: Rate"}));
  series_->Fit().SetStatus(FitStatus::cf_FinResult);
  EXPECT_EQ(LegendNames(), (std::vector<std::string>{"Rate", "Fit: Rate"}));
  series_->Fit().SetCurveShown(false);
  graph_.UpdateScales();
  EXPECT_EQ(LegendNames(), (std::vector<std::string>{"Rate"}));
}

TEST_F(CurveOfAGraph, OnlyWhatMovesTheAxesTellsNewScales) {
  std::vector<GraphChange> told;
  graph_.SetListener([&](GraphChange change) { told.push_back(change); });
  const auto told_by = [&](const auto& change) {
    told.clear();
    change();
    return told.empty() ? GraphChange::Everything : told.front();
  };
  EXPECT_EQ(told_by([&] { series_->Fit().Param(1).SetValue(4); }), GraphChange::Redraw);
  EXPECT_EQ(told_by([&] { series_->SetRegressionType(RegressionType::Line); }),
            GraphChange::Redraw);
  EXPECT_EQ(told_by([&] { series_->AddPoint(30, 1); }), GraphChange::Scales);
  EXPECT_EQ(told_by([&] { series_->SetZeroValue(3); }), GraphChange::Scales);
  graph_.BeginUpdate();
  EXPECT_EQ(told_by([&] { series_->AddPoint(31, 1); }), GraphChange::Everything);
  EXPECT_TRUE(told.empty());
  graph_.EndUpdate();
  EXPECT_EQ(told, std::vector<GraphChange>{GraphChange::Everything});
}

TEST_F(CurveOfAGraph, SaysWhyAModelCannotBeDrawn) {
  EXPECT_EQ(FitError(graph_), "");
  series_->Fit().SetExpression("a*(x");
  EXPECT_NE(FitError(graph_), "");
  EXPECT_TRUE(series_->Curve().Points().Empty());
  series_->Fit().SetExpression("a*(x+1)");
  EXPECT_EQ(FitError(graph_), "");
  EXPECT_FALSE(series_->Curve().Points().Empty());
}

}  // namespace
}  // namespace tarnwick
