// Minimises a sum of squares by the Levenberg-Marquardt method with a scaled trust region (More, The Levenberg-Marquardt
// algorithm: implementation and theory, 1978) on exact derivatives. Knows residuals by their reductions only.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "base/progress.h"
#include "fit/minimise.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

struct NewtonOutcome {
  MinimiseOutcome outcome;
  ReducedJacobian reduced;  ///< at the outcome's parameters; empty when nothing was evaluated
};

/// The minimum next to `start`. options.tolerance bounds the relative reduction of the sum of squares that may be left to
/// gain; from there on a few full steps take the parameters to the precision of the sums. Trials count as iterations.
NewtonOutcome MinimiseNewton(LeastSquaresProblem& residuals, std::span<const double> start,
                             const MinimiseOptions& options, Progress& progress);

/// The same run in stretches.
class NewtonMinimiser {
 public:
  /// `residuals` and `progress` are borrowed.
  NewtonMinimiser(LeastSquaresProblem& residuals, std::span<const double> start,
                  MinimiseOptions options, Progress& progress);
  ~NewtonMinimiser();

  /// Goes on to the end, or until there were so many iterations in all, and options.max_iterations at most: the outcome is
  /// then IterationLimit. Does nothing after the end. Throws EIntegerDivision.
  void RunTo(std::int32_t iterations);
  NewtonOutcome Outcome() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tarnwick
