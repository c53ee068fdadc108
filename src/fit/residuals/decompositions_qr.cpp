#include <Eigen/QR>

#include "fit/residuals/decompositions.h"

namespace tarnwick {

using Eigen::MatrixXd;
using Eigen::VectorXd;

Eigen::Index RankOf(const MatrixXd& matrix, double threshold) {
  Eigen::ColPivHouseholderQR<MatrixXd> qr;
  qr.setThreshold(threshold);
  qr.compute(matrix);
  return qr.rank();
}

VectorXd SolveByColumns(const MatrixXd& matrix, const VectorXd& right, double threshold) {
  Eigen::ColPivHouseholderQR<MatrixXd> qr;
  qr.setThreshold(threshold);
  qr.compute(matrix);
  return qr.solve(right);
}

VectorXd SolveShortest(const MatrixXd& matrix, const VectorXd& right, double threshold) {
  Eigen::CompleteOrthogonalDecomposition<MatrixXd> solver;
  solver.setThreshold(threshold);
  solver.compute(matrix);
  return solver.solve(right);
}

}  // namespace tarnwick
