#include "data/regression/regression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/undefined.h"
#include "data/regression/regression_figures.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

void Fill(TDataSeries& series, const std::vector<double>& x, const std::vector<double>& y) {
  series.Clear();
  series.AddPoints(x, y);
}

std::vector<double> Regression(TDataSeries& series, RegressionType type) {
  series.SetRegressionType(type);
  series.UpdateRegression();
  std::vector<double> values;
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    values.push_back(series.Points().At(i).regression);
  }
  return values;
}

void ExpectNear(const std::vector<double>& values, const std::vector<double>& expected,
                double tolerance) {
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_NEAR(values[i], expected[i], tolerance) << i;
  }
}

TEST(Regression, PolynomialsReproduceWhatTheyCanAndKeepDigitsFarFromZero) {
  for (const double origin : {0.0, 45000.0, -1e7}) {
    TDataSeries series;
    std::vector<double> x;
    std::vector<double> parabola;
    std::vector<double> line;
    for (int i = 0; i < 20; ++i) {
      const double u = 0.5 * i;
      x.push_back(origin + u);
      parabola.push_back(3 - 2 * u + 0.25 * u * u);
      line.push_back(3 - 2 * u);
    }
    Fill(series, x, parabola);
    ExpectNear(Regression(series, RegressionType::Parabola), parabola, 1e-12);
    const auto of_parabola = FiguresOf(series.Points(), RegressionType::Parabola);
    EXPECT_NEAR(of_parabola->curvature.value(), 0.25, 1e-12);
    EXPECT_NEAR(of_parabola->slope / (-2 - 0.5 * origin), 1, 1e-9);
    EXPECT_NEAR(of_parabola->intercept / (3 + 2 * origin + 0.25 * origin * origin), 1, 1e-9);
    Fill(series, x, line);
    ExpectNear(Regression(series, RegressionType::Line), line, 1e-12);
    ExpectNear(Regression(series, RegressionType::RobustLine), line, 1e-9);
    for (const auto type : {RegressionType::Line, RegressionType::RobustLine}) {
      const auto of_line = FiguresOf(series.Points(), type);
      ASSERT_TRUE(of_line);
      EXPECT_NEAR(of_line->slope, -2, 1e-9);
      EXPECT_NEAR(of_line->intercept / (3 + 2 * origin), 1, 1e-9);
      EXPECT_FALSE(of_line->curvature);
    }
  }
}

TEST(Regression, RefusalsHaveFixedTextsAndClearTheStaleFlag) {
  const struct {
    int type;
    double alpha;
    std::string text;
  } cases[] = {
      {0, 0.05, "internal error: regression"}, {8, 0.05, "Unknown regression type"},
      {200, 0.05, "Unknown regression type"},  {7, 0.6, "Invalid Running Average limit"},
      {7, 1, "Invalid Running Average limit"}, {7, kUndefined, "Invalid Running Average limit"}};
  for (const auto& c : cases) {
    TDataSeries series;
    series.AddPoint(1, 1);
    series.SetRegressionType(static_cast<RegressionType>(c.type));
    series.SetRegressionAlpha(c.alpha);
    try {
      series.UpdateRegression();
      ADD_FAILURE() << c.text;
    } catch (const Error& error) {
      EXPECT_EQ(error.what(), c.text);
    }
    EXPECT_FALSE(series.Regression().stale);
    EXPECT_NO_THROW(series.UpdateRegression());
    EXPECT_EQ(series.Regression().failure, c.text);
    TDataSeries copy;
    copy.SetState(series.State());
    EXPECT_THROW(copy.UpdateRegression(), Error);
  }
}

TEST(Regression, AFailureLeavesNoValuesOfTheRegressionBefore) {
  TDataSeries series;
  Fill(series, {1, 2, 3}, {4, 8, 3});
  Regression(series, RegressionType::RunningAverage);
  series.SetRegressionAlpha(0.6);
  EXPECT_THROW(series.UpdateRegression(), Error);
  EXPECT_EQ(series.Points().At(0).regression, 0);
}

// The cubic through its own points with its own end slopes is the spline.
TEST(Regression, AClampedSplineReproducesACubic) {
  const auto cubic = [](double x) { return x * x * x - 2 * x * x + 3; };  // slope 0 at 0 and 4/3
  TDataSeries series;
  std::vector<double> x;
  std::vector<double> y;
  for (const double at : {0.0, 0.2, 0.5, 0.9, 4.0 / 3}) {
    x.push_back(at);
    y.push_back(cubic(at));
  }
  Fill(series, x, y);
  series.SetRegressionAlpha(0);
  series.SetRegressionSteps(10);
  const std::vector<double> second = Regression(series, RegressionType::Spline);
  EXPECT_NEAR(second[2], 6 * 0.5 - 4, 1e-12);
  const PointChain& curve = series.Regression().curve;
  ASSERT_EQ(curve.Size(), 11u);
  for (std::size_t i = 0; i < curve.Size(); ++i) {
    EXPECT_NEAR(curve.At(i).regression, cubic(curve.At(i).x), 1e-12);
    EXPECT_EQ(curve.At(i).y, curve.At(i).regression);
  }
  EXPECT_EQ(curve.LastX(), 4.0 / 3);
}

TEST(Regression, ANaturalSplineHasNoCurvatureAtItsEnds) {
  TDataSeries series;
  Fill(series, {0, 1, 2}, {0, 1, 0});
  series.SetRegressionAlpha(1e30);
  series.SetRegressionSteps(4);
  ExpectNear(Regression(series, RegressionType::Spline), {0, -3, 0}, 1e-14);
  EXPECT_NEAR(series.Regression().curve.At(1).y, 0.6875, 1e-14);
}

TEST(Regression, ASplineThroughTwoPointsIsTheirLine) {
  TDataSeries series;
  Fill(series, {1, 3}, {10, 20});
  series.SetRegressionAlpha(1e30);
  series.SetRegressionSteps(4);
  Regression(series, RegressionType::Spline);
  const PointChain& curve = series.Regression().curve;
  ASSERT_EQ(curve.Size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(curve.At(i).y, 5 + 5 * curve.At(i).x, 1e-12);
}

// A damaged file may ask for two thousand million steps, and for many curves of a million: each stays in proportion to its
// points.
TEST(Regression, CurvesAreBoundedByTheirPoints) {
  const struct {
    std::size_t points;
    std::int32_t steps;
    std::size_t samples;
  } cases[] = {{3, 10'000, 10'001},
               {3, 1'000'000, 10'031},
               {3, 2'000'000'000, 10'031},
               {50'000, 400'000, 400'001},
               {200'000, 2'000'000'000, 1'000'001}};
  for (const auto& c : cases) {
    std::vector<double> x(c.points);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i);
    for (const RegressionType type : {RegressionType::Spline, RegressionType::Smoother}) {
      TDataSeries series;
      series.SetRegressionSteps(c.steps);
      Fill(series, x, x);
      Regression(series, type);
      EXPECT_EQ(series.Regression().curve.Size(), c.samples);
      EXPECT_NEAR(series.Regression().curve.LastX(), x.back(), 1e-6);
    }
  }
}

// Against the sum over all points, and across a gap many steps wide.
TEST(Regression, TheSmootherIsTheKernelWeightedMean) {
  TDataSeries series;
  std::mt19937 random(5);
  std::uniform_real_distribution<double> uniform(0, 10);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 200; ++i) {
    x.push_back(uniform(random));
    y.push_back(std::sin(x.back()));
  }
  Fill(series, x, y);
  series.SetRegressionSteps(30);
  Regression(series, RegressionType::Smoother);
  const PointChain& curve = series.Regression().curve;
  const double h = (series.Points().LastX() - series.Points().Front().x) / 30;
  for (std::size_t i = 0; i < curve.Size(); ++i) {
    double weights = 0;
    double sum = 0;
    for (std::size_t k = 0; k < x.size(); ++k) {
      const double u = (x[k] - curve.At(i).x) / h;
      weights += std::exp(-0.5 * u * u);
      sum += y[k] * std::exp(-0.5 * u * u);
    }
    EXPECT_NEAR(curve.At(i).y, sum / weights, 1e-5);
  }
  Fill(series, {0, 1000}, {1, 2});
  series.SetRegressionSteps(100);
  Regression(series, RegressionType::Smoother);
  EXPECT_EQ(series.Regression().curve.At(20).y, 1);
  EXPECT_EQ(series.Regression().curve.At(50).y, 1.5);
  EXPECT_EQ(series.Regression().curve.At(80).y, 2);
}

}  // namespace
}  // namespace tarnwick
