#include <Eigen/QR>
#include <Eigen/SVD>

#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

using Svd = Eigen::JacobiSVD<Eigen::MatrixXd>;

/// So many columns take no time either way.
constexpr Eigen::Index kFew = 8;

}  // namespace

SingularParts SingularPartsOf(const Eigen::MatrixXd& matrix) {
  const Svd svd(matrix, Eigen::ComputeFullU | Eigen::ComputeFullV);
  return {svd.singularValues(), svd.matrixU(), svd.matrixV(), svd.nonzeroSingularValues()};
}

// A matrix P = Q R with falling columns leaves R', which is near to diagonal, to the rotations: half of them are saved (Drmac &
// Veselic, SIAM J. Matrix Anal. Appl. 29 (2008), 1322).
SingularParts SingularDirectionsOf(const Eigen::MatrixXd& matrix) {
  const Eigen::Index k = matrix.cols();
  if (k <= kFew || matrix.rows() < k) {
    const Svd svd(matrix, Eigen::ComputeThinV);
    return {svd.singularValues(), {}, svd.matrixV(), svd.nonzeroSingularValues()};
  }
  const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> qr(matrix);
  const Eigen::MatrixXd upper = qr.matrixQR().topRows(k).triangularView<Eigen::Upper>();
  const Svd svd(upper.transpose(), Eigen::ComputeFullU);
  return {
      svd.singularValues(), {}, qr.colsPermutation() * svd.matrixU(), svd.nonzeroSingularValues()};
}

Eigen::VectorXd SingularValuesOf(const Eigen::MatrixXd& matrix) {
  return Svd(matrix).singularValues();
}

}  // namespace tarnwick
