// A sum of squares some of whose parameters stay where they are: the same problem over the others. Knows no model and no points.
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

class HeldProblem final : public LeastSquaresProblem {
 public:
  /// Borrows `all`. All its parameters are given, those with `held` set at the values that they keep: their columns are zero, so
  /// that no step of a method by derivatives moves them.
  HeldProblem(LeastSquaresProblem& all, std::vector<bool> held)
      : all_(all), held_(std::move(held)) {}

  std::unique_ptr<LeastSquaresProblem> Thinned(std::size_t most) const override;
  std::size_t ParameterCount() const override { return all_.ParameterCount(); }
  std::size_t PointCount() const override { return all_.PointCount(); }
  std::span<const ParameterRange> Ranges() const override { return all_.Ranges(); }
  std::pair<double, double> RangeOfX() const override { return all_.RangeOfX(); }
  double NormOfY() const override { return all_.NormOfY(); }
  double SumAboutMean() const override { return all_.SumAboutMean(); }
  bool HasExactDerivatives() const override { return all_.HasExactDerivatives(); }
  std::vector<bool> LinearParameters(std::span<const double> p) override;
  double SumOfSquares(std::span<const double> p) override { return all_.SumOfSquares(p); }
  std::vector<double> Residuals(std::span<const double> p, std::size_t most) override {
    return all_.Residuals(p, most);
  }
  ReducedJacobian Reduce(std::span<const double> p, Reduction how) override;

 private:
  HeldProblem(std::unique_ptr<LeastSquaresProblem> own, std::vector<bool> held)
      : own_(std::move(own)), all_(*own_), held_(std::move(held)) {}

  std::unique_ptr<LeastSquaresProblem> own_;  // when thinned
  LeastSquaresProblem& all_;
  std::vector<bool> held_;
};

}  // namespace tarnwick
