#include "fit/residuals/held_problem.h"

#include <algorithm>

#include "fit/residuals/linearised_problem.h"

namespace tarnwick {

std::unique_ptr<LeastSquaresProblem> HeldProblem::Thinned(std::size_t most) const {
  return std::unique_ptr<LeastSquaresProblem>(new HeldProblem(all_.Thinned(most), held_));
}

std::vector<bool> HeldProblem::LinearParameters(std::span<const double> p) {
  std::vector<bool> linear = all_.LinearParameters(p);
  std::transform(linear.begin(), linear.end(), held_.begin(), linear.begin(),
                 [](bool one, bool held) { return one && !held; });
  return linear;
}

ReducedJacobian HeldProblem::Reduce(std::span<const double> p, Reduction how) {
  return Holding(all_.Reduce(p, how), held_);
}

}  // namespace tarnwick
