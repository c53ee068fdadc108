// Makes a row of full steps, which near a minimum with large residuals shrink by a constant factor only, converge faster:
// from how the last steps changed from place to place it foretells where they lead (Anderson 1965; Walker & Ni, Anderson
// acceleration for fixed-point iterations, 2011). Costs no evaluation. Knows vectors; nothing of models.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <deque>

namespace tarnwick {

class StepAcceleration {
 public:
  void Clear() { history_.clear(); }
  /// The step to take at `p` where the full step is `step`: that itself the first time. Lengths are those of metric * vector.
  Eigen::VectorXd Accelerate(const Eigen::VectorXd& p, const Eigen::VectorXd& step,
                             const Eigen::MatrixXd& metric);

 private:
  struct Entry {
    Eigen::VectorXd p;
    Eigen::VectorXd step;
  };
  std::deque<Entry> history_;  // the latest last
};

}  // namespace tarnwick
