#include <Eigen/SVD>

#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

using Svd = Eigen::JacobiSVD<Eigen::MatrixXd>;

}  // namespace

SingularParts SingularPartsOf(const Eigen::MatrixXd& matrix) {
  const Svd svd(matrix, Eigen::ComputeFullU | Eigen::ComputeFullV);
  return {svd.singularValues(), svd.matrixU(), svd.matrixV(), svd.nonzeroSingularValues()};
}

SingularParts SingularDirectionsOf(const Eigen::MatrixXd& matrix) {
  const Svd svd(matrix, Eigen::ComputeThinV);
  return {svd.singularValues(), {}, svd.matrixV(), svd.nonzeroSingularValues()};
}

Eigen::VectorXd SingularValuesOf(const Eigen::MatrixXd& matrix) {
  return Svd(matrix).singularValues();
}

}  // namespace tarnwick
