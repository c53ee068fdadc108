#include "fit/judge/fit_statistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <Eigen/Core>
#include <algorithm>
#include <cmath>

#include "base/undefined.h"
#include "fit/judge/residual_pattern.h"
#include "fit/residuals/decompositions.h"
#include "fit/residuals/sums_of_y.h"

namespace tarnwick {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Figures of linear least squares with this Jacobian and these y, at the solution.
FitFigures Figures(const MatrixXd& jacobian, const VectorXd& y) {
  const Eigen::Index k = jacobian.cols();
  const VectorXd p = SolveShortest(jacobian, y, 1e-14);
  ReducedJacobian reduced;
  reduced.sum_of_squares = (jacobian * p - y).squaredNorm();
  reduced.r = MatrixXd::Zero(k, k);
  const Eigen::Index rows = std::min(jacobian.rows(), k);
  reduced.r.topRows(rows) = TriangleOf(jacobian, y).r.topRows(rows);
  reduced.qtr = VectorXd::Zero(k);
  return ComputeFitFigures(
      reduced,
      {jacobian.rows(), SumUpY({y.data(), static_cast<std::size_t>(y.size())}).about_mean});
}

MatrixXd LineJacobian(const VectorXd& x) {
  MatrixXd jacobian(x.size(), 2);
  jacobian << x, VectorXd::Ones(x.size());
  return jacobian;
}

TEST(FitStatistics, ScaleOfAColumnScalesItsErrorAlone) {
  const VectorXd x = VectorXd::LinSpaced(20, 0, 1);
  const VectorXd y = (3 * x).array() + x.array().sin();
  MatrixXd jacobian = LineJacobian(x);
  const FitStatistics plain = Figures(jacobian, y).statistics;
  jacobian.col(0) *= 1e-150;
  const FitStatistics scaled = Figures(jacobian, y).statistics;
  // The solver of this test gives the short column up, which changes the residuals: errors count per deviation.
  const double deviations = scaled.residual_deviation / plain.residual_deviation;
  EXPECT_NEAR(scaled.standard_errors[0] / plain.standard_errors[0] / 1e150 / deviations, 1, 1e-12);
  EXPECT_NEAR(scaled.standard_errors[1] / plain.standard_errors[1] / deviations, 1, 1e-12);
  EXPECT_NEAR(scaled.correlation[1], plain.correlation[1], 1e-12);
}

TEST(FitStatistics, DirectionsThatTradeAreSeparatedAndNamed) {
  const VectorXd x = VectorXd::LinSpaced(50, 1, 7);
  MatrixXd jacobian(50, 6);
  jacobian.col(0) = x.array().sin();
  jacobian.col(1) = x;
  jacobian.col(2) = -3 * x.array().sin();  // trades with 0
  jacobian.col(3) = VectorXd::Ones(50);
  jacobian.col(4) = VectorXd::Zero(50);  // moves nothing
  jacobian.col(5) = 1e-9 * x;            // trades with 1
  const FitFigures figures = Figures(jacobian, x.array().sqrt());

  ASSERT_EQ(figures.singular_directions.size(), 2U);
  std::vector<std::vector<std::int32_t>> named;
  for (const SingularDirection& direction : figures.singular_directions) {
    EXPECT_LT(direction.relative_singular_value, 1e-13);
    named.push_back(direction.parameters);
    std::sort(named.back().begin(), named.back().end());
  }
  EXPECT_THAT(named, ::testing::UnorderedElementsAre(ElementsAre(0, 2), ElementsAre(1, 5)));
  EXPECT_THAT(figures.unmoved, ElementsAre(4));
  for (const std::size_t i : {0U, 1U, 2U, 4U, 5U})
    EXPECT_TRUE(IsUndefined(figures.statistics.standard_errors[i])) << i;
  // The one that is determined has the error that it has without the doubles.
  MatrixXd alone(50, 3);
  alone << jacobian.col(0), jacobian.col(1), jacobian.col(3);
  FitStatistics reference = Figures(alone, x.array().sqrt()).statistics;
  const double freedom = std::sqrt(47.0 / 44.0);
  EXPECT_NEAR(figures.statistics.standard_errors[3] / reference.standard_errors[2], freedom, 1e-9);
}

TEST(FitStatistics, NothingVariedStillHasQuality) {
  ReducedJacobian none;
  none.sum_of_squares = 2;
  none.r.resize(0, 0);
  const FitFigures figures = ComputeFitFigures(none, {10, 8});
  EXPECT_EQ(figures.statistics.r_squared, 0.75);
  EXPECT_THAT(figures.statistics.standard_errors, IsEmpty());
}

TEST(ResidualPattern, TellsScatterFromPattern) {
  const auto correlation = [](const std::vector<double>& residuals) {
    return FindPattern(residuals).neighbour_correlation;
  };
  EXPECT_NEAR(correlation({1e-200, -1e-200, 1e-200, -1e-200}), -0.75, 1e-15);
  EXPECT_NEAR(correlation({1e200, 1e200, -1e200, -1e200}), 0.25, 1e-15);
  EXPECT_TRUE(IsUndefined(correlation({0, 0})));
  EXPECT_TRUE(IsUndefined(correlation({1})));
  EXPECT_NEAR(FindPattern(std::vector<double>{1, -1, 3, 1}).greatest_share, 0.75, 1e-15);
  struct Row {
    ResidualPattern pattern;
    bool suspicious;
  };
  for (const Row& row :
       {Row{{100, 0.1, 0.06}, false}, Row{{100, 0.3, 0.06}, true}, Row{{4096, 0.1, 0.003}, true},
        Row{{20, 0.1, 0.2}, false}, Row{{20, 0.3, 0.2}, true}, Row{{20, 0.1, 0.6}, true}}) {
    EXPECT_EQ(IsSuspicious(row.pattern), row.suspicious) << row.pattern.neighbour_correlation;
  }
}

TEST(FitStatistics, SumAboutTheMeanKeepsItsDigitsFarFromZero) {
  std::vector<double> y;
  for (int i = 0; i < 3001; ++i) y.push_back(1e9 + (i % 2 == 0 ? 0.5 : -0.5));
  // 1501 above and 1500 below: n/4 - 1/(4n).
  EXPECT_NEAR(SumUpY(y).about_mean, 3001 / 4.0 - 1 / (4 * 3001.0), 1e-6);
  EXPECT_EQ(SumUpY({}).about_mean, 0);
  // Squares of weights count as so many points.
  const std::vector<double> few = {3, 8, 4}, weights = {1, 2, 1}, many = {3, 8, 8, 8, 8, 4};
  EXPECT_NEAR(SumUpY(few, weights).about_mean, SumUpY(many).about_mean, 1e-12);
  EXPECT_NEAR(SumUpY(few, weights).squares, SumUpY(many).squares, 1e-12);
}

}  // namespace
}  // namespace tarnwick
