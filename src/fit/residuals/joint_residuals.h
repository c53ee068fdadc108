// Several problems as one, with some parameters in common: each is reduced on its own, over its own parameters, and the small
// triangles are stacked. Knows problems; no model and no points.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

class JointResiduals final : public LeastSquaresProblem {
 public:
  struct Part {
    LeastSquaresProblem* problem = nullptr;
    std::vector<std::size_t> columns;  ///< which of all parameters are its own, in its order
  };
  /// Borrows the problems. Every one of `parameters` belongs to some part.
  JointResiduals(std::vector<Part> parts, std::size_t parameters);

  std::unique_ptr<LeastSquaresProblem> Thinned(std::size_t most) const override;
  std::size_t ParameterCount() const override { return ranges_.size(); }
  std::size_t PointCount() const override;
  /// Of a common parameter, what all parts allow.
  std::span<const ParameterRange> Ranges() const override { return ranges_; }
  std::pair<double, double> RangeOfX() const override;
  double NormOfY() const override;
  double SumAboutMean() const override;
  bool HasExactDerivatives() const override;
  std::vector<bool> LinearParameters(std::span<const double> p) override;
  double SumOfSquares(std::span<const double> p) override;
  std::vector<double> Residuals(std::span<const double> p, std::size_t most) override;
  ReducedJacobian Reduce(std::span<const double> p, Reduction how) override;

 private:
  std::vector<double> Local(const Part& part, std::span<const double> p) const;

  std::vector<std::unique_ptr<LeastSquaresProblem>> own_;  // when thinned
  std::vector<Part> parts_;
  std::vector<ParameterRange> ranges_;
};

}  // namespace tarnwick
