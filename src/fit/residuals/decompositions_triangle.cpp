#include <Eigen/QR>

#include "fit/residuals/decompositions.h"

namespace tarnwick {

Triangle TriangleOf(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& right) {
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(matrix);
  return {qr.matrixQR().triangularView<Eigen::Upper>(), qr.householderQ().transpose() * right};
}

}  // namespace tarnwick
