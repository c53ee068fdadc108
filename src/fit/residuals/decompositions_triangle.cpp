#include <Eigen/QR>

#include "fit/residuals/decompositions.h"

namespace tarnwick {

Triangle TriangleOf(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& right) {
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(matrix);
  return {qr.matrixQR().triangularView<Eigen::Upper>(), qr.householderQ().transpose() * right};
}

bool IsFarFromSingular(const Eigen::MatrixXd& upper, double share) {
  const auto identity = Eigen::MatrixXd::Identity(upper.rows(), upper.cols());
  const double inverse = upper.triangularView<Eigen::Upper>().solve(identity).norm();
  return inverse * upper.norm() * share < 1;
}

Eigen::VectorXd SolveTriangle(const Eigen::MatrixXd& upper, const Eigen::VectorXd& right) {
  return upper.triangularView<Eigen::Upper>().solve(right);
}

}  // namespace tarnwick
