#include "analysis/smoothing.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/background.h"
#include "analysis/outliers.h"
#include "analysis/polynomial_line.h"
#include "analysis/scipy_rows.h"
#include "base/error.h"
#include "support/cancelling_progress.h"

namespace tarnwick {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Pointwise;

TEST(Smoothing, IsThatOfScipy) {
  const std::vector<double> y = rows::Measured();
  std::vector<double> x(y.size());
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = 0.5 * static_cast<double>(i);
  for (const rows::SavGol& row : rows::kSavGol) {
    SCOPED_TRACE(row.derivative);
    EXPECT_THAT(SmoothByPolynomials(x, y, {row.window, row.order, row.derivative}).y,
                Pointwise(DoubleNear(1e-11), row.y));
  }
}

TEST(Smoothing, OfAPolynomialIsThatPolynomialWhateverTheSpacing) {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> second;
  for (int i = 0; i < 30; ++i) {
    x.push_back(i + 0.3 * std::sin(5.0 * i));
    y.push_back(1 + x.back() * (2 - x.back() * 0.25));
    second.push_back(-0.5);
  }
  EXPECT_THAT(SmoothByPolynomials(x, y, {7, 2, 0}).y, Pointwise(DoubleNear(1e-10), y));
  EXPECT_THAT(SmoothByPolynomials(x, y, {7, 3, 2}).y, Pointwise(DoubleNear(1e-9), second));
}

// What is smoothed does not depend on the unit of X, even or not.
TEST(Smoothing, IsTheSameInEveryUnitOfX) {
  const std::vector<double> y = rows::Measured();
  for (const double bend : {0.0, 0.3}) {
    for (const double unit : {0x1p-40, 0x1p40}) {
      std::vector<double> x, scaled;
      for (std::size_t i = 0; i < y.size(); ++i) {
        x.push_back(static_cast<double>(i) + bend * std::sin(5.0 * static_cast<double>(i)));
        scaled.push_back(unit * x.back());
      }
      EXPECT_EQ(IsEvenlySpaced(scaled, 1e-6), bend == 0) << unit;
      EXPECT_THAT(SmoothByPolynomials(scaled, y, {7, 2, 0}).y,
                  Pointwise(DoubleNear(1e-9), SmoothByPolynomials(x, y, {7, 2, 0}).y));
    }
  }
}

TEST(Smoothing, RefusesWindowsThatCannotBe) {
  const std::vector<double> x = {0, 1, 2, 3, 4};
  for (const LocalPolynomial& local : std::vector<LocalPolynomial>{
           {7, 2, 0}, {4, 2, 0}, {0, 0, 0}, {3, 3, 0}, {3, 1, 2}, {5, -1, 0}, {5, 2, 3}})
    EXPECT_THROW(SmoothByPolynomials(x, x, local), Error) << local.window << ' ' << local.order;
  EXPECT_THROW(RunningMedian(x, 2), Error);
  // Of one X five times nothing has a slope.
  const std::vector<double> same(5, 1.0);
  EXPECT_TRUE(std::isnan(SmoothByPolynomials(same, x, {5, 2, 0}).y[2]));
}

TEST(RunningMedian, NarrowsTowardsTheEnds) {
  EXPECT_THAT(RunningMedian(std::vector<double>{9, 1, 5, 3, 3, 8, 0}, 5),
              ElementsAre(9, 5, 3, 3, 3, 3, 0));
  EXPECT_THAT(RunningMedian(std::vector<double>{2}, 1), ElementsAre(2));
}

TEST(BaseLines, RubberBandIsTheLowerHull) {
  const std::vector<double> x = {0, 1, 2, 3, 4, 6};
  EXPECT_THAT(RubberBand(x, std::vector<double>{0, 5, 1, 4, 4, 3}),
              ElementsAre(0, 0.5, 1, 1.5, 2, 3));
}

TEST(BaseLines, AsymmetricLeastSquaresIsThatOfTheReference) {
  EXPECT_THAT(AsymmetricBaseLine(rows::Measured(), {.smoothness = 100}),
              Pointwise(DoubleNear(1e-6), rows::kArPls));
}

TEST(BaseLines, PolynomialsThroughRegionsAreThoseOfNumpy) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const PolynomialLine line =
      FitPolynomialLine(rows::Uneven(), rows::Measured(), {{{-kInfinity, 5}, {12, kInfinity}}}, 3);
  EXPECT_THAT(line.y, Pointwise(DoubleNear(1e-9), rows::kPolynomial));
}

TEST(LongTools, StopWhereNobodyWaitsForThem) {
  const testing::CancellingProgress progress(0);
  const CancelPoint cancel(progress);
  const std::vector<double> x = rows::Uneven();
  const std::vector<double> y = rows::Measured();
  EXPECT_THROW(SmoothByPolynomials(x, y, {}, cancel), Cancelled);
  EXPECT_THROW(RunningMedian(y, 3, cancel), Cancelled);
  EXPECT_THROW(AsymmetricBaseLine(y, {}, cancel), Cancelled);
  EXPECT_THROW(HampelOutliers(y, 3, 3, cancel), Cancelled);
}

}  // namespace
}  // namespace tarnwick
