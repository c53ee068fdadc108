// The residuals of one model over fixed points, r(x) = (f(x; p) - y) * weight, reduced in one pass. Knows no DataSet, no
// margin and no minimiser.
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "fit/model/curve_fit.h"
#include "fit/residuals/least_squares_problem.h"

namespace tarnwick {

/// Contiguous points of the same length; y with its base line taken off.
struct FitPoints {
  std::span<const double> x;
  std::span<const double> y;
  std::span<const double> weights = {};  ///< 1/σ of each, finite; empty: 1
};

/// Residuals y - f and the model's derivatives, point by point; without those that have no value.
struct ResidualSample {
  std::vector<double> x;
  std::vector<double> curve;  ///< f, as it is
  std::vector<double> weights;
  std::vector<double> residuals;
  Eigen::MatrixXd jacobian;  ///< a row per point, a column per varied parameter
};

class ModelResiduals final : public LeastSquaresProblem {
 public:
  /// `model` must be prepared (TCurFit::Prepare), `points` must outlive this. Differentiates by the parameters with Vary set,
  /// in order. `threads`: 0 = as many as help. Sums do not depend on the number of threads.
  ModelResiduals(TCurFit& model, FitPoints points, int threads = 0);
  ~ModelResiduals() override;

  /// Other weights from now on, borrowed; empty: 1.
  void SetWeights(std::span<const double> weights);
  /// The present values of the varied parameters.
  std::vector<double> Start() const;
  /// The same with their derivatives, both weighted. Throws EIntegerDivision.
  ResidualSample Sample(std::span<const double> p, std::size_t most);
  /// The model at any X. Throws EIntegerDivision.
  std::vector<double> Curve(std::span<const double> p, std::span<const double> x);
  /// f at every point. Throws EIntegerDivision.
  std::vector<double> Values(std::span<const double> p);

  std::unique_ptr<LeastSquaresProblem> Thinned(std::size_t most) const override;
  std::size_t ParameterCount() const override;
  std::size_t PointCount() const override;
  std::span<const ParameterRange> Ranges() const override;
  std::pair<double, double> RangeOfX() const override;
  double NormOfY() const override;
  double SumAboutMean() const override;
  bool HasExactDerivatives() const override;
  std::vector<bool> LinearParameters(std::span<const double> p) override;
  double SumOfSquares(std::span<const double> p) override;
  std::vector<double> Residuals(std::span<const double> p, std::size_t most) override;
  ReducedJacobian Reduce(std::span<const double> p, Reduction how) override;

 private:
  struct Impl;
  explicit ModelResiduals(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace tarnwick
