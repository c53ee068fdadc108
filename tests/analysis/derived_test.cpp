#include "analysis/derived.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "base/error.h"

namespace tarnwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using XY = std::pair<double, double>;

std::vector<XY> PointsOf(const TDataSeries& series) {
  std::vector<XY> points;
  series.Points().ForEachPoint([&](double x, double y) { points.emplace_back(x, y); });
  return points;
}

// What needs no second DataSet of its own is compared through the batch program.
class Derived : public testing::Test {
 protected:
  void Fill(const std::vector<double>& x, const std::vector<double>& y) {
    source.Clear();
    source.AddPoints(x, y);
    source.Source().XDataColumn = "t";
    source.Source().YDataColumn = "U";
    target.AddPoint(99, 99);
  }
  TDataSeries source;
  TDataSeries target;
};

TEST_F(Derived, RunningSumHasAPointForEveryPoint) {
  source.SetDuplicatesAllowed(true);
  Fill({0, 1, 1, 3}, {1, 3, 5, 1});
  source.SetBaseLineSlope(1);
  RunningSum(source, target);
  EXPECT_THAT(PointsOf(target), ElementsAre(XY{0, 1}, XY{1, 3}, XY{1, 7}, XY{3, 5}));
  EXPECT_EQ(target.Source().YDataColumn, "SUM of U");
  EXPECT_TRUE(target.DuplicatesAllowed());
  RunningSum(source, source);
  EXPECT_EQ(PointsOf(source).back(), XY(3, 5));
}

TEST_F(Derived, DensityOfNothingToSpreadIsEmpty) {
  Fill({1, 2}, {1, 3});
  target.SetDuplicatesAllowed(true);
  target.Source().YDataColumn = "kept";
  ProbabilityDensity(source, target, 2);
  EXPECT_THAT(PointsOf(target), IsEmpty());
  EXPECT_TRUE(target.DuplicatesAllowed());
  EXPECT_EQ(target.Source().YDataColumn, "kept");
  Fill({1, 2}, {3, 3});
  ProbabilityDensity(source, target, 10);
  EXPECT_THAT(PointsOf(target), IsEmpty());
  EXPECT_FALSE(target.DuplicatesAllowed());
}

TEST_F(Derived, DerivativeGoesByTheRegression) {
  Fill({0, 1, 2, 3}, {0, 2, 2, 4});
  source.SetRegressionType(RegressionType::Line);
  Derivative(source, target);
  for (const XY& point : PointsOf(target)) EXPECT_NEAR(point.second, 1.2, 1e-14);
  EXPECT_EQ(target.PointCount(), 3);
  source.SetRegressionType(RegressionType::Spline);
  source.SetRegressionSteps(30);
  Derivative(source, target);
  EXPECT_EQ(target.PointCount(), 30);
  source.SetRegressionType(RegressionType::RunningAverage);
  source.SetRegressionAlpha(0.6);  // no window is that short
  EXPECT_THROW(Derivative(source, target), Error);
}

}  // namespace
}  // namespace tarnwick
