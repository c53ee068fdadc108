// A sum of squares to be minimised, as everything that follows derivatives sees it: residuals r(p) reduced in one pass, to
// their sum of squares or with the Jacobian to a small triangle. Knows no model and no points.
#pragma once

#include <Eigen/Core>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tarnwick {

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

/// Where a varied parameter may be looked for.
struct ParameterRange {
  double low = -std::numeric_limits<double>::infinity();  ///< it goes no lower
  double high = std::numeric_limits<double>::infinity();  ///< nor higher
  double search_width =
      0;  ///< a search for starts keeps so near to its start; 0: it goes everywhere
  bool Bounded() const { return low > -HUGE_VAL || high < HUGE_VAL; }
};

class LeastSquaresProblem {
 public:
  virtual ~LeastSquaresProblem() = default;
  LeastSquaresProblem(const LeastSquaresProblem&) = delete;
  LeastSquaresProblem& operator=(const LeastSquaresProblem&) = delete;

  /// The same over every nth point, about `most` at most.
  virtual std::unique_ptr<LeastSquaresProblem> Thinned(std::size_t most) const = 0;
  virtual std::size_t ParameterCount() const = 0;
  virtual std::size_t PointCount() const = 0;
  /// One for each varied parameter.
  virtual std::span<const ParameterRange> Ranges() const = 0;
  /// Smallest and greatest X; of no points 0 and 0.
  virtual std::pair<double, double> RangeOfX() const = 0;
  /// The square root of the sum of the squares of weighted y: what rounding errors of the residuals are measured against.
  virtual double NormOfY() const = 0;
  /// What a constant (one for each DataSet) leaves: the sum of squares of weighted y about their weighted mean.
  virtual double SumAboutMean() const = 0;
  /// False when an expression does not lend itself to blocks: derivatives are then central differences, to some ten digits.
  virtual bool HasExactDerivatives() const = 0;
  /// Parameters in which, all together, the model is linear while the others stand still (a and c of a*exp(-b*x)+c); none
  /// without exact derivatives. Where an expression compares with a parameter, this may be wrong. Throws EIntegerDivision.
  virtual std::vector<bool> LinearParameters(std::span<const double> p) = 0;
  /// Undefined (NaN) when any residual is. Throws EIntegerDivision.
  virtual double SumOfSquares(std::span<const double> p) = 0;
  /// Weighted y - f at every nth point, about `most` at most. Throws EIntegerDivision.
  virtual std::vector<double> Residuals(std::span<const double> p, std::size_t most) = 0;
  /// Asked for NormalEquations, makes another, Orthogonal pass where J'J has lost too many digits. Throws EIntegerDivision.
  virtual ReducedJacobian Reduce(std::span<const double> p, Reduction how) = 0;

 protected:
  LeastSquaresProblem() = default;
};

}  // namespace tarnwick
