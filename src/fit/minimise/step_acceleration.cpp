#include "fit/minimise/step_acceleration.h"

#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostEntries = 6;
/// Changes of steps that are alike to this have nothing more to tell.
constexpr double kAlike = 1e-6;
/// An accelerated step is at most so many times as long as the plain one.
constexpr double kLongest = 20;

}  // namespace

Eigen::VectorXd StepAcceleration::Accelerate(const Eigen::VectorXd& p, const Eigen::VectorXd& step,
                                             const Eigen::MatrixXd& metric) {
  history_.push_back({p, step});
  if (history_.size() > kMostEntries) history_.pop_front();
  const auto changes = static_cast<Eigen::Index>(history_.size()) - 1;
  if (changes == 0) return step;

  Eigen::MatrixXd moved(p.size(), changes);
  Eigen::MatrixXd changed(p.size(), changes);
  for (Eigen::Index i = 0; i < changes; ++i) {
    const Entry& entry = history_[static_cast<std::size_t>(i)];
    const Entry& next = history_[static_cast<std::size_t>(i) + 1];
    moved.col(i) = next.p - entry.p;
    changed.col(i) = next.step - entry.step;
  }
  // Columns of their own size each: the steps shrink from one to the next.
  const Eigen::MatrixXd seen = metric * changed;
  Eigen::VectorXd lengths = seen.colwise().norm().transpose();
  lengths = (lengths.array() > 0).select(lengths, 1.0);
  const Eigen::VectorXd weights =
      SolveByColumns(seen * lengths.cwiseInverse().asDiagonal(), metric * step, kAlike)
          .cwiseQuotient(lengths);
  Eigen::VectorXd accelerated = step - (moved + changed) * weights;
  const bool sound =
      accelerated.allFinite() && (metric * accelerated).norm() <= kLongest * (metric * step).norm();
  return sound ? accelerated : step;
}

}  // namespace tarnwick
