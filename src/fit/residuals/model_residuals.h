// The residuals of one model over fixed points, r(x) = f(x; p) - y, reduced in one pass: to their sum of squares, or with
// the Jacobian to a small triangle. Knows no DataSet, no margin and no minimiser.
#pragma once

#include <Eigen/Core>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "fit/model/curve_fit.h"

namespace tarnwick {

/// Contiguous points of the same length; y with its base line taken off.
struct FitPoints {
  std::span<const double> x;
  std::span<const double> y;
};

/// How the Jacobian is reduced: through J'J (fast, half the digits) or by orthogonal blocks (all digits).
enum class Reduction { NormalEquations, Orthogonal };

/// What one pass leaves of residuals r and Jacobian J (points x k): enough for any step, the covariance and the verdict.
struct ReducedJacobian {
  double sum_of_squares = 0;  ///< of the defined residuals
  Eigen::MatrixXd r;    ///< k x k upper triangle R with J'J = R'R, J's columns in parameter order
  Eigen::VectorXd qtr;  ///< Q'r, so that J'r = R' qtr
  double rest =
      0;  ///< the length of the residuals' part that no combination of J's columns reaches
  std::int64_t undefined =
      0;  ///< points where residual or derivative have no value; left out of R and qtr
  Reduction how = Reduction::Orthogonal;  ///< how it was made in the end
};

class ModelResiduals {
 public:
  /// `model` must be prepared (TCurFit::Prepare), `points` must outlive this. Differentiates by the parameters with Vary set,
  /// in order. `threads`: 0 = as many as help. Sums do not depend on the number of threads.
  ModelResiduals(TCurFit& model, FitPoints points, int threads = 0);
  ~ModelResiduals();

  std::size_t ParameterCount() const;
  std::size_t PointCount() const;
  FitPoints Points() const;
  /// The same model over every nth point, `most` at most.
  std::unique_ptr<ModelResiduals> Thinned(std::size_t most) const;
  /// The square root of the sum of the squares of y: what rounding errors of the residuals are measured against.
  double NormOfY() const;
  /// False when the expression does not lend itself to blocks: derivatives are then central differences, to some ten digits.
  bool HasExactDerivatives() const;
  /// The present values of the varied parameters.
  std::vector<double> Start() const;
  /// Parameters in which, all together, the model is linear while the others stand still (a and c of a*exp(-b*x)+c); none
  /// without exact derivatives. Where an expression compares with a parameter, this may be wrong. Throws EIntegerDivision.
  std::vector<bool> LinearParameters(std::span<const double> p);
  /// Undefined (NaN) when any residual is. Throws EIntegerDivision.
  double SumOfSquares(std::span<const double> p);
  /// y - f at every nth point, `most` at most. Throws EIntegerDivision.
  std::vector<double> Residuals(std::span<const double> p, std::size_t most);
  /// Asked for NormalEquations, makes another, Orthogonal pass where J'J has lost too many digits. Throws EIntegerDivision.
  ReducedJacobian Reduce(std::span<const double> p, Reduction how);

 private:
  struct Impl;
  explicit ModelResiduals(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace tarnwick
