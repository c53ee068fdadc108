#include "results/made_series.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "base/undefined.h"
#include "graph/xy_graph.h"
#include "results/derived_series.h"
#include "results/tools/recipe.h"
#include "results/tools/tool_table.h"
#include "results/tools/unit_names.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(Recipes, AreReadAsTheyAreWritten) {
  const Recipe odd{
      "compute", {"Rate, \"new\"", "", "ü;)"}, {{"expression", "A - \"B\""}, {"n", ""}}};
  EXPECT_EQ(ReadRecipe(RecipeText(odd)), odd);
  const Recipe plain{"smooth", {"Rate"}, {{"method", "savitzky-golay"}, {"low", "-1.5E+20"}}};
  EXPECT_EQ(RecipeText(plain), "smooth(\"Rate\"; method=savitzky-golay; low=-1.5E+20)");
  EXPECT_EQ(ReadRecipe(RecipeText(plain)), plain);
}

TEST(Recipes, RefuseWhatIsNone) {
  for (const char* text : {"", "smooth", "smooth(", "smooth()", "smooth(\"a", "smooth(\"a\"",
                           "smooth(\"a\";)", "smooth(\"a\"; n=)", "(\"a\")"})
    EXPECT_THROW(ReadRecipe(text), Error) << text;
}

TEST(ToolSettings, RefuseWhatTheirRowsDoNotAllow) {
  const struct {
    const char *key, *text;
  } kRows[] = {
      {"method", "none"}, {"window", "0"}, {"window", "x"}, {"order", "10"}, {"other", "1"}};
  for (const auto& row : kRows)
    EXPECT_THROW(SettingsOf(kSmoothTool, {"smooth", {}, {{row.key, row.text}}}), Error) << row.text;
  EXPECT_THROW(SettingsOf(kBackgroundTool, {"background", {}, {{"smoothness", "0"}}}), Error);
  EXPECT_THROW(SettingsOf(kBackgroundTool, {"background", {}, {{"line", "1"}}}), Error);
}

TEST(UnitNames, AreTakenApartAndPutTogether) {
  EXPECT_EQ(SplitNamedUnit("Time [ms] ").unit, "ms");
  EXPECT_EQ(SplitNamedUnit("I (t) (mA)").name, "I (t)");
  EXPECT_EQ(TitleOf(SplitNamedUnit("t/min")), "t (min)");
  EXPECT_EQ(TitleOf(SplitNamedUnit("U")), "U");
  EXPECT_EQ(InverseUnit("m/s"), "1/(m/s)");
  EXPECT_EQ(SquaredUnit("V"), "V²");
}

class MadeOnGraph : public ::testing::Test {
 protected:
  MadeOnGraph() : rate_(Add("Rate")) {
    for (int x = 0; x < 20; ++x) rate_.AddPoint(x, x * x % 7);
  }
  TSeries& Add(const char* name) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName(name);
    return graph_.AddSeries(std::move(series));
  }
  TSeries& Make(const Tool& tool, TSeries& source) {
    return AddMade(graph_, tool, {{&source}, ToolSettings(tool.settings)},
                   {MadeName(graph_, source, tool), AxisId::Y})
        .series;
  }
  TxyGraph graph_;
  TSeries& rate_;
};

TEST_F(MadeOnGraph, ComputesAnewWhatWasMadeOfWhatWasMade) {
  TSeries& late = Add("Late");  // before what it is made from
  TSeries& smooth = Make(kSmoothTool, rate_);
  late.Source().Recipe = "integrate(\"Rate_SMO\")";
  smooth.SetZeroValue(1);
  const double smooth_before = *GetY(smooth, 5);
  rate_.SetY(5, 100);
  const Recomputed made = RecomputeAll(graph_);
  EXPECT_EQ(made.count, 2u);
  EXPECT_EQ(made.told, "");
  EXPECT_GT(*GetY(smooth, 5), smooth_before + 1);
  EXPECT_EQ(smooth.ZeroValue(), 1);
  EXPECT_EQ(smooth.SeriesName(), "Rate_SMO");
  TSeries& again = AddDerived(graph_, smooth, DerivedKind::Integral, {}).series;
  EXPECT_EQ(GetY(late, 12), GetY(again, 12));
  EXPECT_EQ(late.Source().Recipe, again.Source().Recipe);
}

// Beyond its ends the other may lack values, between them nowhere.
TEST_F(MadeOnGraph, ACorrelationNeedsTheOtherWhereverBothAre) {
  const struct {
    std::vector<double> lacking;
    const char* refusal;
  } rows[] = {{{}, ""},
              {{0, 1}, ""},
              {{18, 19}, ""},
              {{19}, ""},
              {{18}, "DataSet \"Other\" has no value at X = 18."},
              {{7}, "DataSet \"Other\" has no value at X = 7."}};
  for (const auto& row : rows) {
    TSeries& other = Add("Other");
    for (int x = 0; x < 20; ++x)
      other.AddPoint(x, std::ranges::count(row.lacking, x) > 0 ? kUndefined : x % 5);
    std::string refusal;
    try {
      const ToolInput input{{&rate_, &other}, ToolSettings(kCorrelateTool.settings)};
      AddMade(graph_, kCorrelateTool, input,
              {"C" + std::to_string(graph_.SeriesCount()), AxisId::Y});
    } catch (const Error& error) {
      refusal = error.what();
    }
    EXPECT_EQ(refusal, row.refusal);
  }
}

TEST_F(MadeOnGraph, TellsWhatCannotBeComputedAnew) {
  Make(kSmoothTool, rate_);
  const char* const recipes[] = {
      "smooth(\"Gone\")", "paint(\"Rate\")", "smooth(\"Rate\"; window=99)",
      "smooth(\"4\")",    "smooth(\"Rate",   "sum(\"Twice\")"};
  const char* const names[] = {"0", "1", "2", "3", "4", "5"};
  for (std::size_t i = 0; i < 6; ++i) Add(names[i]).Source().Recipe = recipes[i];
  graph_.Series(graph_.SeriesCount() - 3).Source().Recipe = "smooth(\"3\")";
  Add("Twice");
  Add("Twice");
  const Recomputed made = RecomputeAll(graph_);
  EXPECT_EQ(made.count, 1u);
  for (const char* told :
       {"\"0\" stays as it is: the graph has no DataSet \"Gone\" any longer.",
        "\"1\" stays as it is: there is no computation \"paint\".", "wider than the data",
        "\"3\" stays as it is: it was computed from itself", "\"4\" stays as it is: \"smooth(",
        "\"5\" stays as it is: the graph has two DataSets \"Twice\"."})
    EXPECT_THAT(made.told, HasSubstr(told));
}

TEST_F(MadeOnGraph, AMeanSaysWhatDoesNotGoIntoIt) {
  TSeries& other = Add("Other");
  other.AddPoint(0, 1);
  const auto told = [&] {
    const ToolInput input{{&rate_, &rate_, &other}, ToolSettings(kAverageTool.settings)};
    const std::string name = MadeName(graph_, rate_, kAverageTool);
    return AddMade(graph_, kAverageTool, input, {name, AxisId::Y}).told;
  };
  EXPECT_THAT(told(), Not(HasSubstr("mean")));
  other.SetBaseLineSlope(2);
  EXPECT_THAT(told(), HasSubstr("Base lines of the DataSets do not go into their mean."));
  other.SetBaseLineSlope(0);
  other.SetZeroValue(3);
  PointErrors errors;
  errors.y = {ErrorKind::Constant, 1};
  other.SetErrors(errors);
  EXPECT_THAT(told(), HasSubstr("Errors and base lines of the DataSets do not go into"));
  other.SetZeroValue(0);
  EXPECT_THAT(told(), HasSubstr("Errors of the DataSets do not go into"));
}

TEST_F(MadeOnGraph, ToolsTellHowManyPointsTheyLeaveOut) {
  TSeries& a = Add("A");
  TSeries& b = Add("B");
  for (int x = 0; x < 10; ++x) a.AddPoint(x, x == 3);
  for (int x = 2; x < 10; ++x) b.AddPoint(x, x == 5);
  TSeries& bent = Add("Bent");
  for (const double x : {0, 1, 4}) bent.AddPoint(x, x * x);
  const char* const kGreatest =
      "Greatest, 1, at a lag of 2 (above 0: the other DataSet comes later).";
  const struct {
    const Tool& tool;
    std::vector<TSeries*> series;
    const char *key, *text, *told;
  } rows[] = {
      {kComputeTool,
       {&a, &b},
       "expression",
       "A - B",
       "2 points of A left out: another DataSet has no value there."},
      {kComputeTool,
       {&a, &b},
       "expression",
       "A / B",
       "2 points of A left out: another DataSet has no value there. "
       "7 points of A left out: no value comes out there."},
      {kComputeTool,
       {&a, &b},
       "expression",
       "1 / A",
       "9 points of A left out: no value comes out there."},
      {kComputeTool, {&b, &a}, "expression", "B - A", ""},
      {kCorrelateTool, {&a, &b}, "quantity", "sum", nullptr},
      {kCorrelateTool,
       {&bent, &bent},
       "quantity",
       "sum",
       "X is not evenly spaced: taken on straight lines at steps of 2."},
      {kResampleTool, {&bent}, "step", "0.5", "3 points make 9 points."},
  };
  for (const auto& row : rows) {
    ToolInput input{row.series, SettingsOf(row.tool, {"", {}, {{row.key, row.text}}})};
    if (row.tool.suggest != nullptr) row.tool.suggest(*row.series.front(), input.settings);
    const MadeSeries made = AddMade(graph_, row.tool, input,
                                    {MadeName(graph_, *row.series.front(), row.tool), AxisId::Y});
    const std::string both = "2 points left out where the two do not overlap. ";
    EXPECT_EQ(made.told, row.told == nullptr ? both + kGreatest : row.told) << row.text;
  }
}

// What a window of 11 leaves of independent noise: the roots of 89/429 and, of the slope, 1/110 (Savitzky & Golay 1964).
TEST_F(MadeOnGraph, SmoothingTellsWhatItLeavesOfTheNoise) {
  TSeries& noisy = Add("Noisy");
  for (int x = 0; x < 60; ++x) noisy.AddPoint(x, std::cos(1234.5 * x * x));
  const auto told = [&](const char* derivative) {
    const ToolInput input{{&noisy},
                          SettingsOf(kSmoothTool, {"smooth", {}, {{"derivative", derivative}}})};
    return AddMade(graph_, kSmoothTool, input, {MadeName(graph_, noisy, kSmoothTool), AxisId::Y})
        .told;
  };
  double before = 0, left = 0;
  const std::string smooth = told("0"), slope = told("1");
  ASSERT_EQ(std::sscanf(smooth.c_str(),
                        "The noise of Y, %lf as neighbouring points scatter, is reduced to %lf.",
                        &before, &left),
            2);
  EXPECT_NEAR(left / before, std::sqrt(89.0 / 429), 0.01);
  ASSERT_EQ(
      std::sscanf(slope.c_str(),
                  "The noise of Y, %lf as neighbouring points scatter, makes one of %lf in the",
                  &before, &left),
      2);
  EXPECT_NEAR(left / before, std::sqrt(1.0 / 110), 0.003);
}

TEST_F(MadeOnGraph, RefusesDataSetsThatAToolCannotTake) {
  TSeries& empty = Add("Empty");
  TSeries& one = Add("One");
  one.AddPoint(1, 2);
  TSeries& flat = Add("Flat");
  for (int x = 0; x < 20; ++x) flat.AddPoint(x, 3);
  TSeries& lacking = Add("Lacking");
  lacking.AddPoint(1, kUndefined);
  const std::size_t before = graph_.SeriesCount();
  for (const Tool* tool :
       {&kSmoothTool, &kBackgroundTool, &kSpectrumTool, &kCorrelateTool, &kComputeTool,
        &kResampleTool, &kClipTool, &kNormaliseTool, &kOutliersTool}) {
    EXPECT_THROW(Make(*tool, empty), Error) << tool->name;
    EXPECT_THROW(Make(*tool, lacking), Error) << tool->name;
  }
  for (const Tool* tool : {&kSpectrumTool, &kCorrelateTool, &kNormaliseTool, &kOutliersTool})
    EXPECT_THROW(Make(*tool, one), Error) << tool->name;
  EXPECT_THROW(Make(kCorrelateTool, flat), Error);
  EXPECT_EQ(graph_.SeriesCount(), before);
}

TEST_F(MadeOnGraph, PointsOfEvenXStayWhereTheyAreAtTheStepThatIsSuggested) {
  TSeries& even = Add("Even");
  for (int x = 0; x < 7; ++x) even.AddPoint(3 + 0.5 * x, x * x % 5);
  const TSeries& made = Make(kResampleTool, even);
  ASSERT_EQ(made.PointCount(), even.PointCount());
  for (std::size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(made.Points().At(i).x, even.Points().At(i).x);
    EXPECT_NEAR(made.Points().At(i).y, even.Points().At(i).y, 1e-12);
  }
  TSeries& one = Add("One");
  one.AddPoint(3, 1);
  ToolSettings settings(kResampleTool.settings);
  kResampleTool.suggest(one, settings);
  EXPECT_EQ(settings.Number("step"), 1);
}

TEST_F(MadeOnGraph, BaseLinesThroughRegionsAreTheSourcesOwnWhereStraight) {
  const TSeries& source = Add("Line");
  for (int x = 0; x < 20; ++x) graph_.Series(1).AddPoint(x, 3 + 2 * x + (x / 5 == 1 ? 50 : 0));
  graph_.Series(1).SetZeroValue(1);
  const auto make = [&](const char* degree, const char* regions, const char* straight) {
    const Recipe recipe{"background",
                        {},
                        {{"method", "polynomial"},
                         {"degree", degree},
                         {"regions", regions},
                         {"straight", straight}}};
    return AddMade(graph_, kBackgroundTool,
                   {{&graph_.Series(1)}, SettingsOf(kBackgroundTool, recipe)},
                   {MadeName(graph_, source, kBackgroundTool), AxisId::Y});
  };
  for (const auto& [degree, straight] : {std::pair("1", "new"), {"2", "own"}}) {
    TSeries& made = make(degree, "0:4, 10 : INF", straight).series;
    EXPECT_NEAR(*GetY(made, 3), 0, 1e-12) << degree;
    EXPECT_NEAR(*GetY(made, 8), 50, 1e-12) << degree;
  }
  for (const char* regions : {"4", "5:1", "a:b", "0:4;5:6", "30:40"})
    EXPECT_THROW(make("1", regions, "own"), Error) << regions;
  const std::size_t before = graph_.SeriesCount();
  const MadeSeries own = make("1", "0:4, 10:19", "own");
  EXPECT_EQ(graph_.SeriesCount(), before);
  EXPECT_EQ(&own.series, &source);
  EXPECT_NEAR(source.GetBaseLine().offset, 3, 1e-12);
  EXPECT_NEAR(source.GetBaseLine().slope, 2, 1e-12);
  EXPECT_THAT(own.told, HasSubstr("base line of \"Line\" itself: 3 + 2 X."));
}

TEST_F(MadeOnGraph, PointsThatOnlyMoveInYKeepTheirErrors) {
  rate_.AddPoint(20, 100);  // an outlier
  PointErrors errors;
  errors.y = {ErrorKind::Percent, 50};
  errors.x = {ErrorKind::Constant, 0.25};
  rate_.SetErrors(errors);
  const struct {
    const Tool& tool;
    Recipe recipe;
    double at_2, at_20;  // errors of Y; Y is 4 and 100
    const char* told;
  } kRows[] = {
      {kBackgroundTool, {"", {}, {{"method", "rubber-band"}}}, 2, 50, "Errors of Y are kept"},
      {kClipTool, {"", {}, {{"left", "2"}}}, 2, 50, "2 points of 21 removed."},
      {kClipTool,
       {"", {}, {{"high", "4"}, {"outside", "limited"}}},
       2,
       kUndefined,
       "1 point set to the limit, which has no error now."},
      {kOutliersTool,
       {"", {}, {{"rule", "tukey"}, {"fate", "replaced"}}},
       2,
       kUndefined,
       "1 outlier of 21 points replaced, which has no error now."},
      {kNormaliseTool, {"", {}, {{"by", "maximum"}}}, 0.02, 0.5, "divided alike"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.tool.name);
    const MadeSeries made = AddMade(graph_, row.tool, {{&rate_}, SettingsOf(row.tool, row.recipe)},
                                    {MadeName(graph_, rate_, row.tool), AxisId::Y});
    EXPECT_THAT(made.told, HasSubstr(row.told));
    const PointChain& points = made.series.Points();
    const Point second = points.At(points.LowerBound(2)), last = points.At(points.Size() - 1);
    EXPECT_DOUBLE_EQ(YErrorAt(made.series, second), row.at_2);
    EXPECT_EQ(XErrorAt(made.series, second), 0.25);
    EXPECT_TRUE(IsUndefined(row.at_20) ? IsUndefined(YErrorAt(made.series, last))
                                       : YErrorAt(made.series, last) == row.at_20);
  }
}

TEST_F(MadeOnGraph, TwoAreNamedInTheLegendWhereOneWas) {
  const auto hide_legend = [this] {
    Legend legend = graph_.GetLegend();
    legend.visible = false;
    graph_.SetLegend(legend);
  };
  while (graph_.SeriesCount() > 1) graph_.DeleteSeries(1);
  hide_legend();
  NameInLegend(graph_);
  EXPECT_FALSE(graph_.GetLegend().visible);
  for (const bool shown : {true, false}) {  // of three the legend was hidden by hand
    const std::string name = MadeName(graph_, graph_.Series(0), kSmoothTool);
    AddMade(graph_, kSmoothTool, {{&graph_.Series(0)}, ToolSettings(kSmoothTool.settings)},
            {name, AxisId::Y});
    hide_legend();
    NameInLegend(graph_);
    EXPECT_EQ(graph_.GetLegend().visible, shown);
  }
}

TEST_F(MadeOnGraph, SpectraNameUnits) {
  rate_.Source().XDataColumn = "t (s)";
  rate_.Source().YDataColumn = "U (V)";
  ToolSettings settings(kSpectrumTool.settings);
  settings.SetText(0, "density");
  const MadeSeries made =
      AddMade(graph_, kSpectrumTool, {{&rate_}, settings}, {"Spectrum", AxisId::Y});
  EXPECT_EQ(made.series.Source().XDataColumn, "Frequency (Hz)");
  EXPECT_EQ(made.series.Source().YDataColumn, "Power density of U (V²/Hz)");
  EXPECT_THAT(made.told, HasSubstr("evenly spaced: FFT. The window's coherent gain, 0.5,"));
  rate_.AddPoint(30, 0);
  graph_.Axis(AxisId::X).SetShowAsTime(true);
  rate_.Source().XDataColumn = "date";
  const MadeSeries uneven =
      AddMade(graph_, kSpectrumTool, {{&rate_}, settings}, {"Uneven", AxisId::Y});
  EXPECT_THAT(uneven.told, HasSubstr("Lomb-Scargle, without a window."));
  EXPECT_EQ(uneven.series.Source().XDataColumn, "Frequency (1/d)");
  SeriesStyle part = made.series.Style();
  part.selectable = false;
  made.series.SetStyle(part);
  HideSource(graph_, rate_, uneven.series, ResultX::Own);
  EXPECT_FALSE(made.series.Style().visible) << "what belongs to another stays over no other X";
  EXPECT_FALSE(graph_.Axis(AxisId::X).ShowAsTime());
  EXPECT_EQ(graph_.Axis(AxisId::X).Look().Title, "Frequency (1/d)");
}

}  // namespace
}  // namespace tarnwick
