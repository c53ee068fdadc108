// The least-squares problem in the neighbourhood of one point, min |r + J s|, with some parameters free and the others in a
// scaled ball: its steps and what they promise. Knows a triangle and a scale; nothing of models and iterations.
#pragma once

#include <Eigen/Core>
#include <cmath>
#include <optional>
#include <vector>

#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

/// The triangle with the free parameters' columns first: R = [F G; 0 B], Q'r = [f; b]. What the free ones can take away
/// from the residuals is |f|^2; the rest of the problem, B and b, is that of the bound ones alone.
struct PartedJacobian {
  /// `free[j]`: parameter j is free.
  PartedJacobian(const ReducedJacobian& jacobian, const std::vector<bool>& free);

  std::vector<Eigen::Index> free;   ///< parameter numbers
  std::vector<Eigen::Index> bound;  ///< parameter numbers
  Eigen::MatrixXd free_r;           ///< F
  Eigen::MatrixXd mixed_r;          ///< G
  Eigen::VectorXd free_qtr;         ///< f
  Eigen::MatrixXd bound_r;          ///< B
  Eigen::VectorXd bound_qtr;        ///< b
  double rest = 0;                  ///< the length of what none of them reaches

  /// The lengths of B's columns.
  Eigen::VectorXd BoundLengths() const { return bound_r.colwise().norm().transpose(); }
  /// The sum of squares when the free parameters fit as well as they can.
  double BestOfFree() const { return bound_qtr.squaredNorm() + rest * rest; }
  /// By how much of it the bound parameters' step lowers that, where everything is linear.
  double Gain(const Eigen::VectorXd& bound_step) const {
    const double best = BestOfFree();
    const double after = (bound_qtr + bound_r * bound_step).squaredNorm() + rest * rest;
    return best > 0 ? 1 - after / best : 0;
  }
  /// The part of |r| that a full step takes away: 0 at a stationary point.
  double Offset() const { return std::hypot(free_qtr.norm(), bound_qtr.norm()); }
  /// What the free parameters must do when the bound ones make this step (zeros for none); all parameters in order.
  Eigen::VectorXd Complete(const Eigen::VectorXd& bound_step) const;
};

/// The same with the `held` parameters at rest: their columns are zero.
ReducedJacobian Holding(const ReducedJacobian& jacobian, const std::vector<bool>& held);

struct TrialStep {
  Eigen::VectorXd step;    ///< of all parameters
  double length = 0;       ///< |D s| of the bound ones
  double damping = 0;      ///< lambda: (B'B + lambda D'D) s = -B'b; 0 inside the ball
  double linear_gain = 0;  ///< |B s|^2 / BestOfFree
  double damped_gain = 0;  ///< lambda |D s|^2 / BestOfFree
  /// How much smaller the linearised problem makes the sum of squares, relative to the best of the free parameters.
  double PredictedReduction() const { return linear_gain + 2 * damped_gain; }
};

/// By the singular values of B inv(D) = U S V': for every damping the step costs a few products (Nocedal & Wright, Numerical
/// Optimization, 2006, chapters 4.3 and 10.3). A full step of a well-posed problem needs none of them.
class LinearisedProblem {
 public:
  /// `scale` is the diagonal of D for the bound parameters, all positive.
  LinearisedProblem(PartedJacobian parted, const Eigen::VectorXd& scale);

  const PartedJacobian& Parted() const { return parted_; }
  const Eigen::VectorXd& Scale() const { return scale_; }
  /// The step to the minimum; the shortest one where that is not a single point.
  TrialStep FullStep() const { return full_ ? *full_ : Damped(0); }
  /// The step to the least value at a distance of `radius` at most, a tenth more or less. Where the step that `damping_guess`
  /// leads to is that long, it is taken.
  TrialStep StepWithin(double radius, double damping_guess = 0) const;

 private:
  void Decompose(const Eigen::MatrixXd& scaled) const;
  TrialStep FullStepOf(const Eigen::VectorXd& scaled_step) const;
  TrialStep Damped(double damping) const;
  double LengthAt(double damping) const;

  PartedJacobian parted_;
  Eigen::VectorXd scale_;
  std::optional<TrialStep> full_;  // where the triangle alone gives it
  // The decomposition waits until a step has to be shorter.
  mutable Eigen::VectorXd singular_;   // of the directions that are determined
  mutable Eigen::MatrixXd v_;          // their columns
  mutable Eigen::VectorXd projected_;  // U'b of theirs
};

}  // namespace tarnwick
