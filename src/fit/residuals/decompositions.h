// The decompositions of small dense matrices that fits need, each as the one question asked of it. Knows matrices only; the
// algorithms behind it are slow to compile and stand in the decompositions_*.cpp alone.
#pragma once

#include <Eigen/Core>

namespace tarnwick {

/// How many columns of `matrix` are independent; what is shorter than `threshold` of the longest is rounding.
Eigen::Index RankOf(const Eigen::MatrixXd& matrix, double threshold);

/// A least-squares solution of matrix x = right, from as many columns as are independent beyond `threshold`.
Eigen::VectorXd SolveByColumns(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& right,
                               double threshold);
/// The shortest least-squares solution of matrix x = right.
Eigen::VectorXd SolveShortest(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& right,
                              double threshold);

/// matrix = Q R.
struct Triangle {
  Eigen::MatrixXd r;
  Eigen::VectorXd qtr;  ///< Q' right
};
Triangle TriangleOf(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& right);

/// The smallest singular value of an upper triangle is surely above `share` of the greatest: by bounds that take no
/// decomposition, the smallest being above 1 / |inv(R)|, the greatest below |R|.
bool IsFarFromSingular(const Eigen::MatrixXd& upper, double share);
/// The solution of upper x = right.
Eigen::VectorXd SolveTriangle(const Eigen::MatrixXd& upper, const Eigen::VectorXd& right);

/// matrix = U diag(values) V', the values falling.
struct SingularParts {
  Eigen::VectorXd values;
  Eigen::MatrixXd u;  ///< empty where it was not asked for
  Eigen::MatrixXd v;  ///< empty where it was not asked for
  Eigen::Index nonzero = 0;
};
/// All of U and V.
SingularParts SingularPartsOf(const Eigen::MatrixXd& matrix);
/// The values, and as much of V as belongs to them.
SingularParts SingularDirectionsOf(const Eigen::MatrixXd& matrix);
/// The values alone.
Eigen::VectorXd SingularValuesOf(const Eigen::MatrixXd& matrix);

}  // namespace tarnwick
