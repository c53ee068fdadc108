// Tries starting values: what they promise with the linear parameters where they fit best (variable projection: Golub &
// Pereyra 1973). Knows residuals; chooses no values.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "fit/minimise/bounded_step.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

struct StartCandidate {
  std::vector<double> p;      ///< all varied parameters
  double sum_of_squares = 0;  ///< that the linearised problem promises there
};

class StartTrial {
 public:
  /// Takes for linear what is linear at `start`. Throws EIntegerDivision, as all of this.
  StartTrial(LeastSquaresProblem& residuals, std::span<const double> start);

  /// At `p`, or the nearest values within bounds. Nothing where the model has no value.
  std::optional<StartCandidate> Try(std::vector<double> p);
  /// Parameters that are not.
  std::vector<std::size_t> Nonlinear() const;
  /// Passes with derivatives so far.
  std::int64_t Evaluations() const { return evaluations_; }

 private:
  LeastSquaresProblem& residuals_;
  Box box_;
  std::vector<bool> linear_;
  std::int64_t evaluations_ = 0;
};

}  // namespace tarnwick
