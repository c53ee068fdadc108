// The steps of a linearised problem against what defines them, over random matrices.
#include "fit/residuals/linearised_problem.h"

#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <cmath>
#include <random>

namespace tarnwick {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// Residuals r and Jacobian J of 12 points, and the same reduced.
struct Problem {
  MatrixXd jacobian;
  VectorXd residuals;
  ReducedJacobian reduced;
  double SumAt(const VectorXd& step) const { return (residuals + jacobian * step).squaredNorm(); }
};

Problem Random(unsigned seed, Eigen::Index parameters) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal(0, 1);
  const auto number = [&](auto...) { return normal(random); };
  Problem problem{
      MatrixXd::NullaryExpr(12, parameters, number), VectorXd::NullaryExpr(12, number), {}};
  for (Eigen::Index j = 0; j < parameters; ++j)
    problem.jacobian.col(j) *= std::pow(10, static_cast<double>(3 * j - 4));
  const Eigen::HouseholderQR<MatrixXd> qr(problem.jacobian);
  const VectorXd rotated = qr.householderQ().transpose() * problem.residuals;
  const MatrixXd upper = qr.matrixQR().triangularView<Eigen::Upper>();
  problem.reduced.r = upper.topRows(parameters);
  problem.reduced.qtr = rotated.head(parameters);
  problem.reduced.rest = rotated.tail(12 - parameters).norm();
  problem.reduced.sum_of_squares = problem.residuals.squaredNorm();
  return problem;
}

TEST(LinearisedProblem, FullStepLeavesNothingToGain) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const Eigen::Index k = 2 + seed % 3;
    const Problem problem = Random(seed, k);
    std::vector<bool> free(static_cast<std::size_t>(k), false);
    if (seed % 2 == 0) free[seed % free.size()] = true;
    const PartedJacobian parted(problem.reduced, free);
    const LinearisedProblem linearised(parted, VectorXd::Ones(std::ssize(parted.bound)));
    const VectorXd step = linearised.FullStep().step;
    const VectorXd best = problem.jacobian.colPivHouseholderQr().solve(-problem.residuals);
    EXPECT_LT((problem.jacobian * (step - best)).norm(), 1e-9) << seed;
    EXPECT_NEAR(problem.SumAt(step), problem.reduced.rest * problem.reduced.rest, 1e-9) << seed;
    EXPECT_NEAR(parted.Offset(), (problem.jacobian * best).norm(), 1e-9) << seed;
    if (parted.free.empty()) continue;
    // The best that the free parameters alone can do.
    MatrixXd columns(12, std::ssize(parted.free));
    for (std::size_t j = 0; j < parted.free.size(); ++j)
      columns.col(static_cast<Eigen::Index>(j)) = problem.jacobian.col(parted.free[j]);
    const VectorXd alone = columns.colPivHouseholderQr().solve(-problem.residuals);
    EXPECT_NEAR(parted.BestOfFree(), (problem.residuals + columns * alone).squaredNorm(), 1e-9);
  }
}

// On the sphere the gradient of the sum points inwards: J'(r + J s) = -lambda D'D s, and what is predicted comes true.
TEST(LinearisedProblem, StepsWithinARadiusAreTheBestOfTheirLength) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const Eigen::Index k = 1 + seed % 4;
    const Problem problem = Random(seed, k);
    const VectorXd scale = problem.jacobian.colwise().norm().transpose();
    const LinearisedProblem linearised(
        PartedJacobian(problem.reduced, std::vector<bool>(static_cast<std::size_t>(k), false)),
        scale);
    const double longest = linearised.FullStep().length;
    for (const double radius : {2 * longest, 0.7 * longest, 0.05 * longest, 1e-4 * longest}) {
      for (const double guess : {0.0, 0.5, 100.0}) {
        const TrialStep trial = linearised.StepWithin(radius, guess);
        EXPECT_NEAR(trial.length, scale.cwiseProduct(trial.step).norm(), 1e-9 * trial.length);
        if (radius > longest) {
          EXPECT_EQ(trial.damping, 0);
        } else {
          EXPECT_GT(trial.damping, 0);
          EXPECT_NEAR(trial.length, radius, 0.1001 * radius) << seed;
        }
        const VectorXd inwards =
            (problem.jacobian.transpose() * (problem.residuals + problem.jacobian * trial.step) +
             trial.damping * scale.cwiseAbs2().cwiseProduct(trial.step))
                .cwiseQuotient(scale);
        EXPECT_LT(inwards.norm(), 1e-9) << seed;
        EXPECT_NEAR(trial.PredictedReduction(),
                    1 - problem.SumAt(trial.step) / problem.reduced.sum_of_squares, 1e-9);
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
