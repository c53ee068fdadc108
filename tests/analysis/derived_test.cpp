#include "analysis/derived.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "analysis/scipy_rows.h"
#include "base/error.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pointwise;
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

TEST_F(Derived, AreThoseOfNumpy) {
  Fill(rows::Uneven(), rows::Measured());
  const auto expect = [&](void (*derive)(const TDataSeries&, TDataSeries&, const LineWay&),
                          const std::vector<double>& expected) {
    derive(source, target, {});
    EXPECT_THAT(YValues(target.Points()), Pointwise(DoubleNear(1e-12), expected));
  };
  expect(&Integral, rows::kIntegral);
  expect(&RunningSum, rows::kSums);
  Derivative(source, target);
  EXPECT_THAT(YValues(target.Points()), Pointwise(DoubleNear(1e-11), rows::kSlopes));
  EXPECT_NEAR(AreaOf(source), rows::kIntegral.back(), 1e-12);
}

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

TEST_F(Derived, ErrorsOfSumsOfYFollowFromThoseOfY) {
  const double kNone = kUndefined;
  const struct {
    void (*make)(const TDataSeries&, TDataSeries&, const LineWay&);
    std::vector<double> errors, expected;
  } kCases[] = {
      {Integral, {3, 4, 2, 1}, {2.5, 6.5, std::sqrt(2.25 + 36 + 9 + 0.25)}},
      {Integral, {3, 0, 2, 1}, {kNone, kNone, kNone}},
      {RunningSum, {3, 4, 12, kNone}, {3, 5, 13, kNone}},
      {[](const TDataSeries& from, TDataSeries& to, const LineWay& /*way*/) {
         Derivative(const_cast<TDataSeries&>(from), to);
       },
       {3, 4, kNone, 2},
       {5, kNone, kNone}},
  };
  for (const auto& row : kCases) {
    Fill({0, 1, 3, 4}, {1, 2, 3, 4});
    PointErrors errors{{ErrorKind::Column, 0}, {}, {}, {}};
    errors.y_values.SetRun(1, row.errors);
    source.SetErrors(errors);
    row.make(source, target, {});
    EXPECT_THAT(NumbersAlong(target.Points(), target.Errors().y_values),
                testing::Pointwise(testing::NanSensitiveDoubleEq(), row.expected));
    EXPECT_EQ(target.Errors().y.kind, ErrorKind::Column);
  }
  ProbabilityDensity(source, target, 4);
  EXPECT_FALSE(HasYErrors(target.Errors()));
  source.SetRegressionType(RegressionType::Parabola);
  Derivative(source, target);
  EXPECT_FALSE(HasYErrors(target.Errors()));
}

// A square gone round from (0, 0).
TEST_F(Derived, GoAlongALineThatTurnsBack) {
  source.SetDuplicatesAllowed(true);
  Fill({0, 0, 1, 2, 2, 1}, {0, 2, 2, 2, 0, 0});
  const LineWay round{ArrivalOrder(source.Points()), {}};
  EXPECT_EQ(AreaOf(source, round), 4);
  Integral(source, target, round);
  EXPECT_THAT(PointsOf(target), ElementsAre(XY{0, 0}, XY{1, 4}, XY{1, 2}, XY{2, 4}, XY{2, 4}));
  EXPECT_THAT(Ids(target.Points()), ElementsAre(1, 5, 2, 3, 4)) << "in the order of the line";
  Derivative(source, target, round);
  EXPECT_THAT(PointsOf(target), ElementsAre(XY{0.5, 0}, XY{1.5, 0}, XY{1.5, 0}));
  source.SetErrors({{ErrorKind::Constant, 1}, {}, {}, {}});
  Integral(source, target, round);
  EXPECT_THAT(NumbersAlong(target.Points(), target.Errors().y_values),
              Pointwise(DoubleNear(1e-15),
                        {0.0, std::sqrt(2.0), std::sqrt(0.5), std::sqrt(1.5), std::sqrt(1.5)}));
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
