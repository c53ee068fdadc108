#include "analysis/fits/fit_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "data/points/point_columns.h"
#include "fit/model/model_report.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

ParameterSettings Varied(const std::string& name, double value) {
  ParameterSettings settings;
  settings.Name = name;
  settings.Value = value;
  settings.Vary = true;
  return settings;
}

/// Points of 3 exp(-0.5 x) + 1 with a ripple that no parameter follows.
void FillDecay(TDataSeries& series, int points = 200) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < points; ++i) {
    x.push_back(i / 20.0);
    y.push_back(3 * std::exp(-0.5 * x.back()) + 1 + 0.01 * std::cos(1000.0 * i * i));
  }
  series.AddPoints(x, y);
}

FitSettings Decay(FitProcType method) {
  FitSettings settings;
  settings.Expression = "a*exp(-b*x)+c";
  settings.ProcType = method;
  settings.NPoints = 100000;
  settings.parameters = {Varied("a", 1), Varied("b", 1), Varied("c", 0)};
  return settings;
}

FitResult Fit(const TDataSeries& series, FinishingStep finish = FinishingStep::No) {
  FitRunOptions options;
  options.finish = finish;
  NoProgress progress;
  return RunFit(PrepareFit(series, options), progress);
}

constexpr FitProcType kMethods[] = {FitProcType::cfp_Powell, FitProcType::cfp_Simplex,
                                    FitProcType::cfp_ConjGrad, FitProcType::cfp_Newton,
                                    FitProcType::cfp_SimplexPowell};

TEST(RunFit, EveryMethodAndItsFinishMeetTheSameMinimum) {
  TDataSeries series;
  FillDecay(series);
  series.Fit().SetSettings(Decay(FitProcType::cfp_Newton), MarkModified::Yes);
  const FitResult best = Fit(series);
  ASSERT_TRUE(best.verdict.trustworthy) << best.verdict.summary;
  EXPECT_THAT(best.values,
              ElementsAre(::testing::DoubleNear(3, 0.01), ::testing::DoubleNear(0.5, 0.01),
                          ::testing::DoubleNear(1, 0.01)));
  for (const FitProcType method : kMethods) {
    SCOPED_TRACE(NameOf(method));
    series.Fit().SetSettings(Decay(method), MarkModified::Yes);
    const FitResult plain = Fit(series);
    EXPECT_FALSE(Failed(plain.outcome.why));
    EXPECT_GE(plain.outcome.value, best.outcome.value * (1 - 1e-12));
    if (method == FitProcType::cfp_Simplex) {
      // It begins as small as its tolerance, and such a simplex passes its stop test at once.
      EXPECT_THAT(plain.verdict.summary, HasSubstr("a finishing Newton-type step improves it"));
    } else {
      EXPECT_LT(plain.outcome.value, plain.outcome.start_value / 100);
    }
    EXPECT_EQ(plain.newton_sum_of_squares.has_value(), method != FitProcType::cfp_Newton);
    const FitResult finished = Fit(series, FinishingStep::Yes);
    EXPECT_NEAR(finished.outcome.value / best.outcome.value, 1, 1e-12);
    EXPECT_EQ(finished.outcome.start_value, plain.outcome.start_value);
    EXPECT_FALSE(finished.newton_sum_of_squares.has_value());
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(finished.values[i] / best.values[i], 1, 1e-9);
      EXPECT_NEAR(finished.statistics.standard_errors[i] / best.statistics.standard_errors[i], 1,
                  1e-6);
    }
  }
}

// Conjugate gradients throw the slope of a growth curve far away, where no step leads back.
TEST(RunFit, TheFinishStartsAgainWhereTheMethodBeforeWentAstray) {
  TDataSeries series;
  series.AddPoints(std::vector<double>{9, 14, 21, 28, 42, 57, 63, 70, 79},
                   std::vector<double>{8.9, 10.8, 18.6, 22.3, 39.4, 56.1, 61.7, 64.6, 67.1});
  FitSettings growth;
  growth.Expression = "a/(1+exp(b-c*x))";
  growth.parameters = {Varied("a", 100), Varied("b", 1), Varied("c", 0.1)};
  growth.ProcType = FitProcType::cfp_Newton;
  series.Fit().SetSettings(growth, MarkModified::Yes);
  const double best = Fit(series).outcome.value;
  growth.ProcType = FitProcType::cfp_ConjGrad;
  series.Fit().SetSettings(growth, MarkModified::Yes);
  const FitResult plain = Fit(series);
  EXPECT_GT(plain.outcome.value, 1000 * best);
  EXPECT_NEAR(plain.newton_sum_of_squares.value_or(0), best, 1e-6 * best);
  EXPECT_NEAR(Fit(series, FinishingStep::Yes).outcome.value, best, 1e-6 * best);
}

TEST(RunFit, RefusesWithAReasonAndKeepsTheValues) {
  const struct {
    const char* expression;
    double start;
    const char* says;
  } rows[] = {{"", 1, "The model has no expression."},
              {"a*ln(x-a)", 1, "no value at X = 0 and at "},
              {"a*exp(1000*(x+1))", 1, "no value at X = 0 "},
              {"a*x+random", 1, "The model uses random: another curve each time"},
              {"a+x", HUGE_VAL, "a has no finite value to start from."}};
  for (const FitProcType method : kMethods) {
    for (const auto& [expression, start, says] : rows) {
      SCOPED_TRACE(expression + std::string(NameOf(method)));
      TDataSeries series;
      FillDecay(series);
      FitSettings settings = Decay(method);
      settings.Expression = expression;
      settings.parameters = {Varied("a", start)};
      series.Fit().SetSettings(settings, MarkModified::Yes);
      const FitResult result = Fit(series);
      EXPECT_THAT(result.verdict.summary, HasSubstr(says));
      EXPECT_FALSE(result.verdict.trustworthy);
      EXPECT_EQ(result.values, result.start);
      ApplyFit(series, result);
      EXPECT_EQ(series.Fit().Settings(), settings);
      EXPECT_FALSE(series.Fit().Modified());
    }
  }
}

TEST(ApplyFit, PutsValuesAndResultIntoTheModelAndTells) {
  TDataSeries series;
  FillDecay(series);
  FitSettings settings = Decay(FitProcType::cfp_Newton);
  ParameterSettings held = Varied("x0", 0);
  held.Vary = false;
  settings.parameters.insert(settings.parameters.begin(), held);
  series.Fit().SetSettings(settings, MarkModified::Yes);
  const std::vector<double> y_before = YValues(series.Points());
  const FitResult result = Fit(series);
  int told = 0;
  series.Listeners().Set(1,
                         [&](TDataSeries&, ChangeCode code) { told += code == ChangeCode::Fit; });
  ApplyFit(series, result);
  EXPECT_GE(told, 1);
  EXPECT_EQ(series.Fit().Param(1).Value(), 0);
  EXPECT_EQ(series.Fit().Param(2).Value(), result.values[0]);
  EXPECT_EQ(series.Fit().Param(4).Value(), result.values[2]);
  EXPECT_FALSE(series.Fit().Modified());
  ASSERT_NE(series.Fit().Result(), nullptr);
  EXPECT_EQ(series.Fit().Result()->values, result.values);
  EXPECT_EQ(YValues(series.Points()), y_before);
  series.AddPoint(-1, 0);
  EXPECT_EQ(series.Fit().Result(), nullptr);
}

}  // namespace
}  // namespace tarnwick
