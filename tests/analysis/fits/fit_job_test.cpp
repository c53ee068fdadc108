#include "analysis/fits/fit_job.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "analysis/fits/fit_residuals.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Points (0, 0), (1, 10), (2, 20) ...
void Fill(TDataSeries& series, int points) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < points; ++i) {
    x.push_back(i);
    y.push_back(10.0 * i);
  }
  series.AddPoints(x, y);
}

struct Choice {
  const char* name;
  int points;
  std::int32_t thin_to;
  std::optional<double> left;
  std::optional<double> right;
  std::int64_t in_range;
  std::int64_t chosen;
  double first_x;
  double last_x;
};

const Choice kChoices[] = {
    {"every seventh of a thousand", 1000, 150, {}, {}, 1000, 143, 0, 994},
    {"every third of three hundred", 300, 150, {}, {}, 300, 100, 0, 297},
    {"fewer than asked for", 148, 150, {}, {}, 148, 148, 0, 147},
    {"the end counts one more", 149, 150, {}, {}, 149, 75, 0, 148},
    {"left margin is inside", 100, 1000, 40.0, {}, 60, 60, 40, 99},
    {"right margin is outside", 100, 1000, {}, 60.0, 60, 60, 0, 59},
    {"between points", 100, 1000, 39.5, 60.5, 21, 21, 40, 60},
    {"thinned between margins", 1000, 10, 100.0, 200.0, 100, 10, 100, 199},
    {"never beyond the right margin", 10000, 3, 0.0, 5000.0, 5000, 3, 0, 3336},
    {"margins the wrong way round", 100, 1000, 60.0, 40.0, 0, 0, 0, 0},
    {"left of everything", 100, 1000, {}, -1.0, 0, 0, 0, 0},
    {"undefined left margin", 100, 1000, kUndefined, {}, 0, 0, 0, 0},
    {"undefined right margin", 100, 1000, {}, kUndefined, 100, 100, 0, 99},
};

TEST(PrepareFit, ChoosesPointsByMarginsAndNumber) {
  for (const Choice& row : kChoices) {
    SCOPED_TRACE(row.name);
    TDataSeries series;
    Fill(series, row.points);
    FitSettings settings;
    settings.NPoints = row.thin_to;
    settings.LeftMarginUsed = row.left.has_value();
    settings.LeftMargin = row.left.value_or(77);
    settings.RightMarginUsed = row.right.has_value();
    settings.RightMargin = row.right.value_or(-77);
    series.Fit().SetSettings(settings, MarkModified::Yes);
    const FitJob job = PrepareFit(series);
    EXPECT_EQ(job.points_in_range, row.in_range);
    EXPECT_EQ(job.points_chosen, row.chosen);
    ASSERT_EQ(job.x.size(), static_cast<std::size_t>(row.chosen));
    if (job.x.empty()) continue;
    EXPECT_EQ(job.x.front(), row.first_x);
    EXPECT_EQ(job.x.back(), row.last_x);
    for (std::size_t i = 0; i < job.x.size(); ++i) EXPECT_EQ(job.y[i], 10 * job.x[i]);

    FitRunOptions all;
    all.points = FitPointChoice::All;
    EXPECT_EQ(PrepareFit(series, all).x.size(), static_cast<std::size_t>(row.in_range));
  }
}

TEST(PrepareFit, TakesTheBaseLineOffAndLeavesOutWhatIsNoNumber) {
  TDataSeries series;
  series.AddPoints(std::vector<double>{1, 2, 3, 4, 5},
                   std::vector<double>{10, kUndefined, 30, kInfinity, 50});
  series.SetZeroValue(5);
  series.SetBaseLineSlope(2);
  const FitJob job = PrepareFit(series);
  EXPECT_EQ(job.points_in_range, 5);
  EXPECT_EQ(job.points_chosen, 5);
  EXPECT_EQ(job.x, (std::vector<double>{1, 3, 5}));
  EXPECT_EQ(job.y, (std::vector<double>{3, 19, 35}));
  EXPECT_EQ(*GetY(series, 3), 30);
}

TEST(PrepareFit, FollowsTheCurveThatStandsForThePoints) {
  TDataSeries series;
  Fill(series, 5);
  series.SetRegressionSteps(8);
  series.SetRegressionAlpha(1e30);  // natural ends
  for (const RegressionType type : {RegressionType::Spline, RegressionType::Parabola}) {
    series.SetRegressionType(type);
    const FitJob job = PrepareFit(series);
    const bool curve = type == RegressionType::Spline;
    EXPECT_EQ(job.source, curve ? FitPointSource::RegressionCurve : FitPointSource::Points);
    ASSERT_EQ(job.x.size(), curve ? 9U : 5U);
    for (std::size_t i = 0; i < job.x.size(); ++i) EXPECT_NEAR(job.y[i], 10 * job.x[i], 1e-9);
  }
}

TEST(FitResiduals, AreWhatTheModelLeaves) {
  TDataSeries series;
  Fill(series, 1000);
  series.SetZeroValue(1);
  series.Source().YDataColumn = "Current";
  FitSettings settings;
  settings.Expression = "10*x + sqrt(x-10)*0";
  settings.RightMarginUsed = true;
  settings.RightMargin = 600;
  settings.weighting.weights = FitWeights::Errors;
  series.Fit().SetSettings(settings, MarkModified::No);
  PointErrors errors{{ErrorKind::Column, 0}, {ErrorKind::Constant, 0.25}, {}, {}};
  errors.y_values.Set(12, 7);  // of X = 11 alone; the others cannot be weighed
  series.SetErrors(errors);
  TDataSeries target;
  Fill(target, 3);
  FitResiduals(series, target);
  ASSERT_EQ(target.PointCount(), 590);  // the root has no value below 10
  EXPECT_EQ(target.Points().Front().x, 10);
  target.Points().ForEachPoint([](double, double y) { EXPECT_EQ(y, -1); });
  EXPECT_EQ(target.Source().YDataColumn, "RES of Current");
  EXPECT_EQ(YErrorAt(target, target.Points().At(1)), 7);
  EXPECT_TRUE(IsUndefined(YErrorAt(target, target.Points().At(2))));
  EXPECT_EQ(XErrorAt(target, target.Points().At(2)), 0.25);
}

}  // namespace
}  // namespace tarnwick
