// What joins a graph when something is computed from its DataSets, beyond what both faces are compared for elsewhere.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/progress.h"
#include "graph/xy_graph.h"
#include "results/derived_series.h"
#include "results/fit_colours.h"
#include "results/fit_leftovers.h"
#include "results/fit_print.h"
#include "results/fit_series.h"

namespace tarnwick {
namespace {

class ResultsOnGraph : public ::testing::Test {
 protected:
  ResultsOnGraph() : rate_(Add("Rate")) {
    for (const double x : {1, 2, 3, 4}) rate_.AddPoint(x, 2 * x + 1 / x);
  }

  TSeries& Add(const char* name) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName(name);
    return graph_.AddSeries(std::move(series));
  }

  void TakeSlopeAsModel() {
    FitSettings model;
    model.Expression = "a*x";
    ParameterSettings& a = model.parameters.emplace_back();
    a.Name = "a";
    a.Vary = true;
    rate_.Fit().SetSettings(model, MarkModified::Yes);
  }

  TxyGraph graph_;
  TSeries& rate_;
};

TEST_F(ResultsOnGraph, DerivedDataSetsTakeFreeNames) {
  struct NameRow {
    DerivedKind kind;
    const char* first;
    const char* second;
    const char* third;
  };
  constexpr NameRow kRows[] = {
      {DerivedKind::Integral, "Rate_INT", "Rate_INT_1", "Rate_INT_2"},
      {DerivedKind::RunningSum, "Rate_SUM", "Rate_SUM_1", "Rate_SUM_2"},
      {DerivedKind::Histogram, "Rate_HIS", "Rate_HIS_1", "Rate_HIS_2"},
      {DerivedKind::Derivative, "Rate_DIF", "Rate_DIF_1", "Rate_DIF_2"},
  };
  for (const NameRow& row : kRows) {
    for (const char* name : {row.first, row.second, row.third})
      EXPECT_EQ(AddDerived(graph_, rate_, row.kind, {}).series.SeriesName(), name);
  }
}

TEST_F(ResultsOnGraph, NothingIsDrawnAgainstAHiddenAxis) {
  rate_.Source().YDataColumn = "U";
  SetLook(graph_.Axis(AxisId::Y2), &AxisLook::ShowAxis, false);
  DerivedOptions on_main;
  on_main.y_axis = AxisId::Y;
  AddDerived(graph_, rate_, DerivedKind::Integral, on_main);
  EXPECT_FALSE(graph_.Axis(AxisId::Y2).Look().ShowAxis);
  AddDerived(graph_, rate_, DerivedKind::Integral, {});
  EXPECT_TRUE(graph_.Axis(AxisId::Y2).Look().ShowAxis);
  EXPECT_EQ(graph_.Axis(AxisId::Y2).Look().Title, "INT of U");
}

TEST_F(ResultsOnGraph, WhatIsThereOfAFitIsTold) {
  TakeSlopeAsModel();
  EXPECT_EQ(LeftoverText(graph_, rate_), "");
  AddResiduals(graph_, rate_, ResidualsName(rate_));
  PrintFitOnGraph(graph_, rate_);
  EXPECT_EQ(LeftoverText(graph_, rate_),
            "The residuals and printed values on the graph are of this fit, too.");
}

TEST_F(ResultsOnGraph, FitsOfSeveralDataSetsTakeTheirColours) {
  const Color red = FitSettings().CurveColor;
  const auto fit = [](TSeries& series) {
    FitSettings model;
    model.Expression = "2*x";
    model.Status = FitStatus::cf_FinResult;
    series.Fit().SetSettings(model, MarkModified::Yes);
  };
  fit(rate_);
  ColourFitsByDataSet(graph_);
  EXPECT_EQ(rate_.ModelCurveColor(), red) << "one fit";
  SeriesStyle style;
  style.line_color = red;
  for (const char* name :
       {"Confidence 95 % of Rate", "Prediction 95 % of Rate, lower", "Rate % of"}) {
    TSeries& band = Add(name);
    band.SetStyle(style);
  }
  TSeries& dark = Add("Dark");
  TSeries& chosen = Add("Chosen");
  for (TSeries* const one : {&dark, &chosen}) {
    one->AddPoint(1, 2);
    fit(*one);
  }
  style.symbol_color = Color::FromRgb(0x20, 0x20, 0x20);
  dark.SetStyle(style);
  style.symbol_color = Color::FromRgb(200, 100, 50);
  rate_.SetStyle(style);
  const Color green = Color::FromRgb(0, 200, 0);
  FitSettings model = chosen.Fit().Settings();
  model.CurveColor = green;
  chosen.Fit().SetSettings(model, MarkModified::Yes);
  for (int i = 0; i < 2; ++i) {
    ColourFitsByDataSet(graph_);
    EXPECT_EQ(rate_.ModelCurveColor(), Color::FromRgb(150, 75, 37)) << "darker";
    EXPECT_EQ(dark.ModelCurveColor().Red(), 255 - 167) << "lighter";
    EXPECT_EQ(chosen.ModelCurveColor(), green);
  }
  EXPECT_EQ(graph_.Series(1).Style().line_color, rate_.ModelCurveColor());
  EXPECT_EQ(graph_.Series(2).Style().line_color, rate_.ModelCurveColor());
  EXPECT_EQ(graph_.Series(3).Style().line_color, red) << "no band";
}

TEST_F(ResultsOnGraph, ADerivativeThatFailsLeavesTheGraphAsItWas) {
  rate_.SetRegressionAlpha(0.6);
  rate_.SetRegressionType(RegressionType::RunningAverage);
  EXPECT_THROW(AddDerived(graph_, rate_, DerivedKind::Derivative, {}), Error);
  EXPECT_EQ(graph_.SeriesCount(), 1u);
}

TEST_F(ResultsOnGraph, WhatIsLeftOfAFitIsToldAndRenewed) {
  TakeSlopeAsModel();
  NoProgress progress;
  const auto fit = [&] { ApplyFit(rate_, RunFit(PrepareFit(rate_), progress)); };
  const auto ends = [&] {
    std::string told;
    for (std::size_t i = 1; i < graph_.SeriesCount(); ++i)
      told += graph_.Series(i).SeriesName().substr(0, 4) + " " +
              std::to_string(graph_.Series(i).GetExtremes().x_max).substr(0, 1) + ", ";
    return told;
  };
  RenewLeftovers(graph_, rate_);  // there was no fit yet
  fit();
  AddResiduals(graph_, rate_, ResidualsName(rate_));
  AddBands(graph_, rate_, 0.95);
  EXPECT_EQ(OutdatedText(graph_, rate_), "");
  rate_.AddPoint(5, 20);
  EXPECT_EQ(OutdatedText(graph_, rate_),
            "The bands and residuals on the graph are of a fit of \"Rate\" that holds no more.");
  EXPECT_EQ(ends(), "Resi 4, Conf 4, Conf 4, Pred 4, Pred 4, ");
  fit();
  RenewLeftovers(graph_, rate_);
  EXPECT_EQ(OutdatedText(graph_, rate_), "");
  EXPECT_EQ(ends(), "Resi 5, Conf 5, Conf 5, Pred 5, Pred 5, ");
}

// a = 64/30, with the standard error sqrt(0.8902778 / 3 / 30); Student's 97.5 % for 3 degrees of freedom is 3.182446.
TEST_F(ResultsOnGraph, BandsLieRoundTheCurveAsTheErrorsOfTheFitTell) {
  TakeSlopeAsModel();
  NoProgress progress;
  ApplyFit(rate_, RunFit(PrepareFit(rate_), progress));
  AddBands(graph_, rate_, 0.95);
  const struct {
    const char* name;
    double at_4;
    bool in_legend;
  } rows[] = {{"Confidence 95 % of Rate", 9.799418, true},
              {"Confidence 95 % of Rate, lower", 7.267249, false},
              {"Prediction 95 % of Rate", 10.680084, true},
              {"Prediction 95 % of Rate, lower", 6.386583, false}};
  ASSERT_EQ(graph_.SeriesCount(), 5u);
  for (std::size_t i = 0; i < 4; ++i) {
    const TSeries& band = graph_.Series(i + 1);
    EXPECT_EQ(band.SeriesName(), rows[i].name);
    EXPECT_EQ(band.Points().Front().x, 1);
    const Point last = band.Points().At(band.Points().Size() - 1);
    EXPECT_EQ(last.x, 4);
    EXPECT_NEAR(last.y, rows[i].at_4, 2e-6) << rows[i].name;
    EXPECT_FALSE(band.Style().show_symbols || band.Style().selectable) << "a line, not points";
    EXPECT_EQ(band.Style().show_in_legend != 0, rows[i].in_legend) << rows[i].name;
  }
}

TEST_F(ResultsOnGraph, ResidualsTakeThePlaceOfEarlierOnesAlone) {
  FitSettings model;
  model.Expression = "2*x";
  rate_.Fit().SetSettings(model, MarkModified::Yes);
  Add("Rest");  // measured, as it happens under that name
  for (int i = 0; i < 2; ++i) AddResiduals(graph_, rate_, "Rest");
  ASSERT_EQ(graph_.SeriesCount(), 3u);
  EXPECT_EQ(graph_.Series(1).PointCount(), 0);
  EXPECT_EQ(GetY(graph_.Series(2), 4), 0.25);
  EXPECT_FALSE(graph_.Series(2).Style().first_axis) << "where no panel is known";
  EXPECT_THROW(AddBands(graph_, rate_, 0.95), Error);  // nothing was fitted
}

}  // namespace
}  // namespace tarnwick
