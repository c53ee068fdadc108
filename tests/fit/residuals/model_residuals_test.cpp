#include "fit/residuals/model_residuals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/undefined.h"
#include "expr/words/parser_exception.h"
#include "fitted_model.h"

namespace tarnwick {
namespace {

using testing::MakeModel;
using testing::MakePoints;
using testing::Points;

constexpr auto kPeak = "a*exp(0-((x-b)/c)^2)+d*x+e";

std::unique_ptr<TCurFit> Peak(const std::string& expression = kPeak) {
  return MakeModel(expression, {{"a", 3}, {"b", 0.4}, {"c", 1.2}, {"d", 0.1}, {"e", 0.5}});
}

Points PeakPoints(std::size_t count) {
  return MakePoints(count, -4, 5, 0.1, [](double x) { return 3.1 * std::exp(-x * x) + 0.3; });
}

/// J'J and J'r of a reduction.
struct Products {
  explicit Products(const ReducedJacobian& reduced)
      : jj(reduced.r.transpose() * reduced.r), jr(reduced.r.transpose() * reduced.qtr) {}
  Eigen::MatrixXd jj;
  Eigen::VectorXd jr;
};

// Lengths around blocks, paddings and tasks.
TEST(ModelResiduals, EveryReductionAgreesWithSumsPointByPoint) {
  const auto model = Peak();
  for (const std::size_t count : {1U, 7U, 8U, 255U, 256U, 257U, 8192U, 8200U, 30000U}) {
    const Points points = PeakPoints(count == 1 ? 2 : count);
    ModelResiduals residuals(*model, points.View());
    const std::vector<double> p = residuals.Start();
    Eigen::MatrixXd jj = Eigen::MatrixXd::Zero(5, 5);
    Eigen::VectorXd jr = Eigen::VectorXd::Zero(5);
    double squares = 0;
    for (std::size_t i = 0; i < points.x.size(); ++i) {
      const double x = points.x[i];
      const double t = (x - p[1]) / p[2];
      const double g = std::exp(-t * t);
      const double r = p[0] * g + p[3] * x + p[4] - points.y[i];
      const Eigen::VectorXd j{{g, 2 * p[0] * g * t / p[2], 2 * p[0] * g * t * t / p[2], x, 1}};
      jj += j * j.transpose();
      jr += j * r;
      squares += r * r;
    }
    EXPECT_NEAR(residuals.SumOfSquares(p), squares, 1e-12 * squares) << count;
    for (const Reduction how : {Reduction::NormalEquations, Reduction::Orthogonal}) {
      const ReducedJacobian reduced = residuals.Reduce(p, how);
      const Products products(reduced);
      EXPECT_LT((products.jj - jj).norm(), 1e-11 * jj.norm()) << count;
      EXPECT_LT((products.jr - jr).norm(), 1e-11 * jr.norm()) << count;
      EXPECT_NEAR(reduced.sum_of_squares, squares, 1e-12 * squares) << count;
      EXPECT_NEAR(reduced.rest * reduced.rest, squares - reduced.qtr.squaredNorm(), 1e-9 * squares);
    }
  }
}

TEST(ModelResiduals, NumberOfThreadsDoesNotShow) {
  const auto model = Peak();
  const Points points = PeakPoints(100'001);
  ModelResiduals one(*model, points.View(), 1);
  ModelResiduals two(*model, points.View(), 2);
  const std::vector<double> p = one.Start();
  EXPECT_EQ(one.SumOfSquares(p), two.SumOfSquares(p));
  for (const Reduction how : {Reduction::NormalEquations, Reduction::Orthogonal}) {
    const ReducedJacobian a = one.Reduce(p, how);
    const ReducedJacobian b = two.Reduce(p, how);
    EXPECT_EQ(a.r, b.r);
    EXPECT_EQ(a.qtr, b.qtr);
    EXPECT_EQ(a.sum_of_squares, b.sum_of_squares);
  }
  EXPECT_EQ(testing::Fit(one).outcome.p, testing::Fit(two).outcome.p);
}

// An assignment makes the block evaluator decline.
TEST(ModelResiduals, RecordByRecordAgrees) {
  const Points points = PeakPoints(1000);
  const auto model = Peak();
  const auto declined = Peak("0*(z:=1)+" + std::string(kPeak));
  ModelResiduals blocks(*model, points.View());
  ModelResiduals records(*declined, points.View());
  EXPECT_TRUE(blocks.HasExactDerivatives());
  EXPECT_FALSE(records.HasExactDerivatives());
  const NewtonOutcome a = testing::Fit(blocks);
  const NewtonOutcome b = testing::Fit(records);
  for (std::size_t j = 0; j < 5; ++j) {
    EXPECT_NEAR(a.outcome.p[j], b.outcome.p[j], 1e-8);
    EXPECT_EQ(declined->Param(static_cast<std::int32_t>(j) + 1).Value(), blocks.Start()[j]);
  }
}

TEST(ModelResiduals, CountsUndefinedPointsAndLeavesThemOut) {
  const auto model = MakeModel("a*ln(x)+b", {{"a", 2}, {"b", 1}});
  Points points = MakePoints(600, 1, 7, 0.1, [](double x) { return 2 * std::log(x); });
  const Points defined = points;
  ModelResiduals sound(*model, defined.View());
  const Products expected(sound.Reduce(sound.Start(), Reduction::Orthogonal));
  points.x.insert(points.x.begin() + 300, {-1.0, 3.0});
  points.y.insert(points.y.begin() + 300, {0.0, kUndefined});
  ModelResiduals residuals(*model, points.View());
  EXPECT_TRUE(IsUndefined(residuals.SumOfSquares(residuals.Start())));
  for (const Reduction how : {Reduction::NormalEquations, Reduction::Orthogonal}) {
    const ReducedJacobian reduced = residuals.Reduce(residuals.Start(), how);
    EXPECT_EQ(reduced.undefined, 2);
    EXPECT_LT((Products(reduced).jj - expected.jj).norm(), 1e-11 * expected.jj.norm());
    EXPECT_NEAR(reduced.sum_of_squares, sound.SumOfSquares(sound.Start()), 1e-9);
  }
}

// The derivative of x^b by b at 0 is 0, but its formula takes the logarithm of 0.
TEST(ModelResiduals, DifferencesStandInForDerivativesWithoutValue) {
  const auto model = MakeModel("a*x^b", {{"a", 2}, {"b", 1.5}});
  const Points points{{0, 1, 2, 3}, {0, 2, 5, 11}};
  ModelResiduals residuals(*model, points.View());
  const ReducedJacobian reduced = residuals.Reduce(residuals.Start(), Reduction::Orthogonal);
  EXPECT_EQ(reduced.undefined, 0);
  double expected = 0;
  for (const double x : {1.0, 2.0, 3.0}) {
    const double slope = 2 * std::pow(x, 1.5) * std::log(x);
    expected += slope * slope;
  }
  EXPECT_NEAR(Products(reduced).jj(1, 1), expected, 1e-9);
}

TEST(ModelResiduals, FallsBackToOrthogonalWhereProductsLoseTheirDigits) {
  const auto model = MakeModel("a+b*(x+1e7)", {{"a", 1}, {"b", 1}});
  const Points points = MakePoints(500, 0, 1, 0, [](double x) { return x; });
  ModelResiduals residuals(*model, points.View());
  const ReducedJacobian reduced = residuals.Reduce(residuals.Start(), Reduction::NormalEquations);
  EXPECT_EQ(reduced.how, Reduction::Orthogonal);
  // The determinant of J'J does not depend on the offset.
  const double spread = 500 * (1.0 / 12) * 501 / 499 * 500;
  const double determinant = reduced.r(0, 0) * reduced.r(1, 1);
  EXPECT_NEAR(determinant * determinant, spread, 1e-6 * spread);
}

TEST(ModelResiduals, FindsLinearParameters) {
  struct Row {
    const char* expression;
    std::vector<bool> linear;
  };
  for (const Row& row :
       {Row{"a*exp(0-b*x)+c", {true, false, true}}, Row{"a*b*x+c", {true, false, true}},
        Row{"a/(1+b*x)+c^2", {true, false, false}}, Row{"a+b*x+c*x^2", {true, true, true}},
        Row{"a*x^b*c", {true, false, false}}}) {
    const auto model = MakeModel(row.expression, {{"a", 2}, {"b", 1}, {"c", 3}});
    const Points points = MakePoints(20, 1, 3, 0, [](double x) { return x; });
    ModelResiduals residuals(*model, points.View());
    EXPECT_EQ(residuals.LinearParameters(residuals.Start()), row.linear) << row.expression;
  }
}

TEST(ModelResiduals, IntegerDivisionByZeroIsThrownFromEveryThread) {
  const auto model = MakeModel("a*x+7 div (x-5)", {{"a", 1}});
  const Points points = MakePoints(60'001, 4.4, 16, 0, [](double x) { return x; });
  ModelResiduals residuals(*model, points.View(), 2);
  EXPECT_THROW(residuals.SumOfSquares(residuals.Start()), EIntegerDivision);
  EXPECT_THROW(residuals.Reduce(residuals.Start(), Reduction::Orthogonal), EIntegerDivision);
}

}  // namespace
}  // namespace tarnwick
