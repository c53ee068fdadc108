// The base line under the peaks of a curve, estimated from the curve alone. Mathematics over spans; knows no DataSet.
#pragma once

#include <span>
#include <vector>

#include "base/cancel_point.h"

namespace tarnwick {

/// The lower convex hull of the points, at each X: a rubber band stretched from end to end below them (A. M. Andrew, Information
/// Processing Letters 9, 216 (1979)). `x` does not fall; values are finite.
std::vector<double> RubberBand(std::span<const double> x, std::span<const double> y);

struct ArPls {
  double smoothness = 1e5;  ///< lambda, above 0: the greater, the stiffer
  double ratio = 1e-6;      ///< relative change of the weights at which rounds end
  int rounds = 100;         ///< at most
};

/// Asymmetrically reweighted penalised least squares: S.-J. Baek, A. Park, Y.-J. Ahn & J. Choo, Analyst 140, 250 (2015). Takes
/// the points as evenly spaced. Values are finite; fewer than three points are their own base line.
std::vector<double> AsymmetricBaseLine(std::span<const double> y, const ArPls& options,
                                       const CancelPoint& cancel = {});

}  // namespace tarnwick
