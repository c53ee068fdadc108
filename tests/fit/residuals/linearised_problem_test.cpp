// The steps of a linearised problem against what defines them, over random matrices. Its sums are written out: as matrix
// expressions they took half a minute to compile.
#include "fit/residuals/linearised_problem.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;
using Values = std::vector<double>;

constexpr Index kPoints = 12;

double SumOfSquares(const Values& values) {
  double sum = 0;
  for (const double value : values) sum += value * value;
  return sum;
}

double Distance(Values one, const Values& other) {
  for (std::size_t i = 0; i < one.size(); ++i) one[i] -= other[i];
  return std::sqrt(SumOfSquares(one));
}

/// Residuals r and Jacobian J of 12 points, and the same reduced.
struct Problem {
  MatrixXd jacobian;
  VectorXd residuals;
  ReducedJacobian reduced;

  /// r + J s.
  Values After(const VectorXd& step) const {
    Values after;
    for (Index i = 0; i < kPoints; ++i) {
      after.push_back(residuals(i));
      for (Index j = 0; j < step.size(); ++j) after.back() += jacobian(i, j) * step(j);
    }
    return after;
  }
  double SumAt(const VectorXd& step) const { return SumOfSquares(After(step)); }
  /// The step to the least sum when only these parameters move.
  VectorXd BestOf(const std::vector<Index>& moved) const {
    MatrixXd columns(kPoints, std::ssize(moved));
    for (Index j = 0; j < columns.cols(); ++j) {
      for (Index i = 0; i < kPoints; ++i)
        columns(i, j) = jacobian(i, moved[static_cast<std::size_t>(j)]);
    }
    const VectorXd found = SolveByColumns(columns, residuals, 1e-14);
    VectorXd step = VectorXd::Zero(jacobian.cols());
    for (Index j = 0; j < found.size(); ++j) step(moved[static_cast<std::size_t>(j)]) = -found(j);
    return step;
  }
};

Problem Random(unsigned seed, Index parameters) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal(0, 1);
  Problem problem{MatrixXd(kPoints, parameters), VectorXd(kPoints), {}};
  for (Index i = 0; i < kPoints; ++i) {
    problem.residuals(i) = normal(random);
    for (Index j = 0; j < parameters; ++j)
      problem.jacobian(i, j) = normal(random) * std::pow(10, static_cast<double>(3 * j - 4));
  }
  const Triangle triangle = TriangleOf(problem.jacobian, problem.residuals);
  ReducedJacobian& reduced = problem.reduced;
  reduced.r = MatrixXd::Zero(parameters, parameters);
  reduced.qtr = VectorXd::Zero(parameters);
  reduced.sum_of_squares = problem.SumAt(reduced.qtr);
  double reached = 0;
  for (Index i = 0; i < parameters; ++i) {
    reduced.qtr(i) = triangle.qtr(i);
    reached += triangle.qtr(i) * triangle.qtr(i);
    for (Index j = i; j < parameters; ++j) reduced.r(i, j) = triangle.r(i, j);
  }
  reduced.rest = std::sqrt(reduced.sum_of_squares - reached);
  return problem;
}

TEST(LinearisedProblem, FullStepLeavesNothingToGain) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const Index k = 2 + seed % 3;
    const Problem problem = Random(seed, k);
    std::vector<bool> free(static_cast<std::size_t>(k), false);
    if (seed % 2 == 0) free[seed % free.size()] = true;
    const PartedJacobian parted(problem.reduced, free);
    const LinearisedProblem linearised(parted, VectorXd::Ones(std::ssize(parted.bound)));
    const VectorXd step = linearised.FullStep().step;
    std::vector<Index> all = parted.free;
    all.insert(all.end(), parted.bound.begin(), parted.bound.end());
    const Values best = problem.After(problem.BestOf(all));
    EXPECT_LT(Distance(problem.After(step), best), 1e-9) << seed;
    EXPECT_NEAR(problem.SumAt(step), problem.reduced.rest * problem.reduced.rest, 1e-9) << seed;
    EXPECT_NEAR(parted.Offset(), Distance(best, problem.After(VectorXd::Zero(k))), 1e-9) << seed;
    if (parted.free.empty()) continue;
    EXPECT_NEAR(parted.BestOfFree(), problem.SumAt(problem.BestOf(parted.free)), 1e-9) << seed;
  }
}

// On the sphere the gradient of the sum points inwards: J'(r + J s) = -lambda D'D s, and what is predicted comes true.
TEST(LinearisedProblem, StepsWithinARadiusAreTheBestOfTheirLength) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const Index k = 1 + seed % 4;
    const Problem problem = Random(seed, k);
    VectorXd scale(k);
    for (Index j = 0; j < k; ++j) scale(j) = problem.jacobian.col(j).norm();
    const LinearisedProblem linearised(
        PartedJacobian(problem.reduced, std::vector<bool>(static_cast<std::size_t>(k), false)),
        scale);
    const double longest = linearised.FullStep().length;
    for (const double radius : {2 * longest, 0.7 * longest, 0.05 * longest, 1e-4 * longest}) {
      for (const double guess : {0.0, 0.5, 100.0}) {
        const TrialStep trial = linearised.StepWithin(radius, guess);
        const Values after = problem.After(trial.step);
        Values scaled, inwards;
        for (Index j = 0; j < k; ++j) {
          scaled.push_back(scale(j) * trial.step(j));
          double gradient = 0;
          for (Index i = 0; i < kPoints; ++i)
            gradient += problem.jacobian(i, j) * after[static_cast<std::size_t>(i)];
          inwards.push_back(gradient / scale(j) + trial.damping * scaled.back());
        }
        EXPECT_NEAR(trial.length, std::sqrt(SumOfSquares(scaled)), 1e-9 * trial.length);
        EXPECT_LT(std::sqrt(SumOfSquares(inwards)), 1e-9) << seed;
        EXPECT_NEAR(trial.PredictedReduction(),
                    1 - SumOfSquares(after) / problem.reduced.sum_of_squares, 1e-9);
        if (radius > longest) {
          EXPECT_EQ(trial.damping, 0);
        } else {
          EXPECT_GT(trial.damping, 0);
          EXPECT_NEAR(trial.length, radius, 0.1001 * radius) << seed;
        }
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
