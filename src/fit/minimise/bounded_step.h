// Steps and values that keep within bounds: a step that would leave the box goes along its walls, an objective is continued
// beyond them. Knows boxes and linearised problems; no method.
#pragma once

#include <Eigen/Core>
#include <span>
#include <vector>

#include "fit/minimise.h"
#include "fit/residuals/least_squares_problem.h"
#include "fit/residuals/linearised_problem.h"

namespace tarnwick {

class Box {
 public:
  explicit Box(std::span<const ParameterRange> ranges);

  /// True when some parameter has a bound at all.
  bool Bounds() const { return bounds_; }
  const ParameterRange& Range(std::size_t j) const { return ranges_[j]; }
  bool Holds(std::span<const double> p) const;
  /// The nearest values within; what misses a bound by rounding alone stands on it.
  void Clamp(std::span<double> p) const;
  /// Those that stand on a bound.
  std::vector<bool> OnBounds(std::span<const double> p) const;

 private:
  std::vector<ParameterRange> ranges_;
  bool bounds_ = false;
};

/// The step of `problem` from `p` within `radius` and the box: one after the other, what leaves the box first is set on its
/// wall and the rest solved anew (as in bounded least squares: Stark & Parker, Computational Statistics 10 (1995), 129). Of
/// these steps, each also cut off at the first wall, the one that promises most. No parameter with a bound is free in `problem`.
TrialStep StepInBox(const LinearisedProblem& problem, const Eigen::VectorXd& p, const Box& box,
                    double radius, double damping_guess);

/// Within the box `objective`, beyond it what that is at the nearest point of the box and more the farther off: a descent ends
/// on the wall. Borrows `box`.
ScalarObjective ContinuedBeyond(ScalarObjective objective, const Box& box, double scale_of_values);

/// Puts an outcome of the continued objective into the box, and each parameter onto the nearer wall where that is no worse.
void PutIntoBox(const ScalarObjective& objective, const Box& box, MinimiseOutcome& outcome);

}  // namespace tarnwick
