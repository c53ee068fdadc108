#include "fit/minimise/start_trial.h"

#include <Eigen/Core>
#include <cmath>

#include "fit/residuals/linearised_problem.h"

namespace tarnwick {

StartTrial::StartTrial(LeastSquaresProblem& residuals, std::span<const double> start)
    : residuals_(residuals), box_(residuals.Ranges()), linear_(residuals.LinearParameters(start)) {}

std::optional<StartCandidate> StartTrial::Try(std::vector<double> p) {
  box_.Clamp(p);
  ++evaluations_;
  const ReducedJacobian reduced = residuals_.Reduce(p, Reduction::Orthogonal);
  if (reduced.undefined != 0 || !reduced.r.allFinite() || !reduced.qtr.allFinite())
    return std::nullopt;
  const PartedJacobian parted(reduced, linear_);
  const Eigen::VectorXd step =
      parted.Complete(Eigen::VectorXd::Zero(static_cast<Eigen::Index>(parted.bound.size())));
  StartCandidate candidate{p, parted.BestOfFree()};
  if (!step.allFinite() || !std::isfinite(candidate.sum_of_squares)) return std::nullopt;
  for (std::size_t i = 0; i < p.size(); ++i) candidate.p[i] += step[static_cast<Eigen::Index>(i)];
  box_.Clamp(candidate.p);
  return candidate;
}

std::vector<std::size_t> StartTrial::Nonlinear() const {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < linear_.size(); ++i) {
    if (!linear_[i]) numbers.push_back(i);
  }
  return numbers;
}

}  // namespace tarnwick
