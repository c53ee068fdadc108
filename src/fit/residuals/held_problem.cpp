#include "fit/residuals/held_problem.h"

#include "fit/residuals/linearised_problem.h"

namespace tarnwick {

std::unique_ptr<LeastSquaresProblem> HeldProblem::Thinned(std::size_t most) const {
  return std::unique_ptr<LeastSquaresProblem>(new HeldProblem(all_.Thinned(most), held_));
}

std::vector<bool> HeldProblem::LinearParameters(std::span<const double> p) {
  std::vector<bool> linear = all_.LinearParameters(p);
  for (std::size_t i = 0; i < linear.size(); ++i) linear[i] = linear[i] && !held_[i];
  return linear;
}

ReducedJacobian HeldProblem::Reduce(std::span<const double> p, Reduction how) {
  return Holding(all_.Reduce(p, how), held_);
}

}  // namespace tarnwick
