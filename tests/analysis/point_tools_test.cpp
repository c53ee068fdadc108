// What makes points anew: at even steps, by expressions, without outliers.
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/arithmetic.h"
#include "analysis/outliers.h"
#include "analysis/resampling.h"
#include "analysis/scipy_rows.h"
#include "base/error.h"

namespace tarnwick {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pointwise;

TEST(Resample, ByAkimaIsThatOfScipy) {
  EXPECT_THAT(Resample(rows::Uneven(), rows::Measured(), 0.3, ResampleMethod::Akima).y,
              Pointwise(DoubleNear(1e-10), rows::kAkima));
}

TEST(Resample, TakesMeansAndLines) {
  const std::vector<double> x = {0, 0, 1, 1.2, 4};
  const std::vector<double> y = {1, 3, 4, 6, 20};
  EXPECT_THAT(Resample(x, y, 1, ResampleMethod::Linear).x, ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(Resample(x, y, 2, ResampleMethod::Linear).y, ElementsAre(2, 10, 20));
  const Resampled means = Resample(x, y, 1, ResampleMethod::Mean);
  EXPECT_THAT(means.x, ElementsAre(0, 1, 4));
  EXPECT_THAT(means.y, ElementsAre(2, 5, 20));
  EXPECT_EQ(means.empty, 2u);
  EXPECT_THAT(Resample({{7.0}}, {{1.0}}, 1, ResampleMethod::Akima).y, ElementsAre(1));
  EXPECT_THROW(Resample(x, y, 1e-9, ResampleMethod::Linear), Error);
}

TEST(Outliers, AreFoundByWhatLiesAround) {
  const std::vector<double> y = {1, 2, 3, 40, 5, 6, 7, 8, 0};
  std::vector<bool> hampel;
  for (const Expected& one : HampelOutliers(y, 5, 3)) hampel.push_back(one.is_outlier);
  EXPECT_THAT(hampel, ElementsAre(false, false, false, true, false, false, false, false, true));
  EXPECT_EQ(HampelOutliers(y, 5, 3)[3].y, 5);
  // numpy: quartiles 2 and 7, so what lies beyond -5.5 and 14.5
  EXPECT_EQ(TukeyOutliers(y, 1.5)[3].y, 14.5);
  EXPECT_FALSE(TukeyOutliers(y, 1.5)[8].is_outlier);
  EXPECT_THROW(HampelOutliers(y, 11, 3), Error);
}

class Arithmetic : public ::testing::Test {
 protected:
  Arithmetic() {
    for (const double x : {0, 1, 2, 3, 4}) a_.AddPoint(x, 10 + x);
    for (const double x : {0.5, 2.5, 3.5}) b_.AddPoint(x, 2 * x);
    b_.SetZeroValue(1);
  }
  ArithmeticResult Of(const std::string& expression) {
    const TDataSeries* both[] = {&a_, &b_};
    return Calculate(expression, both);
  }
  std::string Refusal(const std::string& expression) {
    try {
      Of(expression);
    } catch (const Error& error) {
      return error.what();
    }
    return {};
  }
  TDataSeries a_;
  TDataSeries b_;
};

TEST_F(Arithmetic, IsAtTheXOfTheFirstWhereAllHaveValues) {
  const ArithmeticResult less = Of("A - b");
  EXPECT_THAT(less.x, ElementsAre(1, 2, 3));
  EXPECT_THAT(less.y, ElementsAre(10, 9, 8));
  EXPECT_EQ(less.beyond, 2u);
  EXPECT_THAT(Of("B").y, ElementsAre(1, 3, 5));
  const ArithmeticResult alone = Of("ln(X)*A");
  EXPECT_EQ(alone.x.size(), 4u);  // B is not asked
  EXPECT_EQ(alone.without_value, 1u);
  EXPECT_TRUE(alone.error.empty());
}

TEST_F(Arithmetic, CarriesErrorsOn) {
  a_.SetErrors({.y = {ErrorKind::Constant, 0.3}, .x = {}, .y_values = {}, .x_values = {}});
  b_.SetErrors({.y = {ErrorKind::Constant, 0.4}, .x = {}, .y_values = {}, .x_values = {}});
  // B at 2 lies 3/4 of the way from 0.5 to 2.5.
  const double b_error = 0.4 * std::hypot(0.25, 0.75);
  EXPECT_NEAR(Of("A - B").error[1], std::hypot(0.3, b_error), 1e-9);
  EXPECT_NEAR(Of("A * B").error[1], std::hypot(3 * 0.3, 12 * b_error), 1e-8);
  EXPECT_NEAR(Of("2*A").error[0], 0.6, 1e-9);
}

TEST_F(Arithmetic, RefusesWhatItDoesNotKnow) {
  EXPECT_THAT(Refusal("A - C"), HasSubstr("names C; known are X, A and B."));
  EXPECT_THAT(Refusal("A - ("), HasSubstr("character"));
  EXPECT_EQ(Refusal(""), "The expression is empty.");
}

}  // namespace
}  // namespace tarnwick
