// The figures of regressions that are polynomials in X: what a straight line's slope is. Knows points; no DataSet.
#pragma once

#include <optional>
#include <string>

#include "data/points/point_chain.h"
#include "data/regression/regression_type.h"

namespace tarnwick {

/// Y = intercept + slope X + curvature X^2, with Y as stored.
struct RegressionFigures {
  double intercept = 0;
  double slope = 0;
  std::optional<double> curvature;  ///< of a parabola only
};

/// Of the parabola and the two lines, which are computed anew. Nothing for the other kinds, and for points of fewer than two
/// different X, which have no slope.
std::optional<RegressionFigures> FiguresOf(const PointChain& points, RegressionType type);

/// "Y = intercept + slope X: intercept 3, slope -2."
std::string FiguresText(const RegressionFigures& figures);

}  // namespace tarnwick
