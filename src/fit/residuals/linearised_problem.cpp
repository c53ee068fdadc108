#include "fit/residuals/linearised_problem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

/// Relative to the longest of scaled columns: what is shorter is rounding.
constexpr double kLost = 32 * std::numeric_limits<double>::epsilon();
/// Of the greatest singular value: as long as the smallest is surely above, a triangle is solved as well as by all of them.
constexpr double kWellPosed = 1e-4;
/// How near the step's length must come to the radius.
constexpr double kRadiusTolerance = 0.1;
constexpr int kMostDampings = 50;

VectorXd ColumnScale(const MatrixXd& r) {
  const VectorXd lengths = r.colwise().norm().transpose();
  return (lengths.array() > 0).select(lengths, 1.0);
}

/// The number of columns that are independent whatever their units.
Index Rank(const MatrixXd& r) {
  return RankOf(r * ColumnScale(r).cwiseInverse().asDiagonal(), kLost);
}

}  // namespace

ReducedJacobian Holding(const ReducedJacobian& jacobian, const std::vector<bool>& held) {
  std::vector<Index> moving;
  for (std::size_t j = 0; j < held.size(); ++j) {
    if (!held[j]) moving.push_back(static_cast<Index>(j));
  }
  if (moving.size() == held.size()) return jacobian;
  ReducedJacobian rest = jacobian;
  const auto count = static_cast<Index>(moving.size());
  const Index k = jacobian.r.cols();
  rest.r.setZero();
  rest.qtr.setZero();
  VectorXd qtr = jacobian.qtr;
  if (count > 0) {
    Triangle triangle = TriangleOf(jacobian.r(Eigen::all, moving), jacobian.qtr);
    qtr = std::move(triangle.qtr);
    rest.r(Eigen::all, moving) = triangle.r;
    rest.qtr.head(count) = qtr.head(count);
  }
  rest.rest = std::hypot(jacobian.rest, qtr.tail(k - count).norm());
  return rest;
}

PartedJacobian::PartedJacobian(const ReducedJacobian& jacobian, const std::vector<bool>& is_free)
    : rest(jacobian.rest) {
  for (std::size_t j = 0; j < is_free.size(); ++j)
    (is_free[j] ? free : bound).push_back(static_cast<Index>(j));
  const auto free_count = static_cast<Index>(free.size());
  const auto bound_count = static_cast<Index>(bound.size());
  if (free.empty()) {
    bound_r = jacobian.r;
    bound_qtr = jacobian.qtr;
    return;
  }
  MatrixXd columns(jacobian.r.rows(), jacobian.r.cols());
  columns << jacobian.r(Eigen::all, free), jacobian.r(Eigen::all, bound);
  const auto [r, qtr] = TriangleOf(columns, jacobian.qtr);
  free_r = r.topLeftCorner(free_count, free_count);
  mixed_r = r.topRightCorner(free_count, bound_count);
  bound_r = r.bottomRightCorner(bound_count, bound_count);
  free_qtr = qtr.head(free_count);
  bound_qtr = qtr.tail(bound_count);
}

VectorXd PartedJacobian::Complete(const VectorXd& bound_step) const {
  VectorXd step(static_cast<Index>(free.size() + bound.size()));
  step(bound) = bound_step;
  if (free.empty()) return step;
  const VectorXd scale = ColumnScale(free_r);
  const VectorXd shortest = SolveShortest(free_r * scale.cwiseInverse().asDiagonal(),
                                          free_qtr + mixed_r * bound_step, kLost);
  step(free) = -shortest.cwiseQuotient(scale);
  return step;
}

LinearisedProblem::LinearisedProblem(PartedJacobian parted, const VectorXd& scale)
    : parted_(std::move(parted)), scale_(scale) {
  if (parted_.bound.empty()) return;
  const MatrixXd scaled = parted_.bound_r * scale.cwiseInverse().asDiagonal();
  if (IsFarFromSingular(scaled, kWellPosed)) {
    full_ = FullStepOf(-SolveTriangle(scaled, parted_.bound_qtr));
  } else {
    Decompose(scaled);
  }
}

void LinearisedProblem::Decompose(const MatrixXd& scaled) const {
  const SingularParts parts = SingularPartsOf(scaled);
  const Index rank = std::min(Rank(parted_.bound_r), parts.nonzero);
  singular_ = parts.values.head(rank);
  v_ = parts.v.leftCols(rank);
  projected_ = parts.u.leftCols(rank).transpose() * parted_.bound_qtr;
}

TrialStep LinearisedProblem::Damped(double damping) const {
  const VectorXd along =
      -singular_.array() * projected_.array() / (singular_.array().square() + damping);
  TrialStep trial;
  trial.step = parted_.Complete((v_ * along).cwiseQuotient(scale_));
  trial.length = along.norm();
  trial.damping = damping;
  const double best = parted_.BestOfFree();
  if (best > 0) {
    trial.linear_gain = singular_.cwiseProduct(along).squaredNorm() / best;
    trial.damped_gain = damping * along.squaredNorm() / best;
  }
  return trial;
}

/// All that the bound parameters can take away.
TrialStep LinearisedProblem::FullStepOf(const VectorXd& scaled_step) const {
  TrialStep full;
  full.step = parted_.Complete(scaled_step.cwiseQuotient(scale_));
  full.length = scaled_step.norm();
  const double best = parted_.BestOfFree();
  if (best > 0) full.linear_gain = parted_.bound_qtr.squaredNorm() / best;
  return full;
}

double LinearisedProblem::LengthAt(double damping) const {
  return (singular_.array() * projected_.array() / (singular_.array().square() + damping))
      .matrix()
      .norm();
}

// Newton's method on 1/length - 1/radius, which is nearly linear and concave in the damping: from the left it never goes too
// far, so that its first step from 0 bounds the damping from below.
TrialStep LinearisedProblem::StepWithin(double radius, double damping_guess) const {
  const double farthest = (1 + kRadiusTolerance) * radius;
  if (full_ && full_->length <= farthest) return *full_;
  if (full_ && singular_.size() == 0)
    Decompose(parted_.bound_r * scale_.cwiseInverse().asDiagonal());
  if (LengthAt(0) <= farthest) return FullStep();
  const auto next = [this, radius](double damping) {
    const double length = LengthAt(damping);
    const auto denominator = singular_.array().square() + damping;
    const double slope =
        (singular_.array().square() * projected_.array().square() / denominator.cube()).sum();
    return damping + (length - radius) / radius * length * length / slope;
  };
  const double least = next(0);
  double damping = std::max(least, damping_guess);
  for (int i = 0; i < kMostDampings; ++i) {
    if (std::abs(LengthAt(damping) - radius) <= kRadiusTolerance * radius) break;
    damping = std::max(least, next(damping));
  }
  return Damped(damping);
}

}  // namespace tarnwick
