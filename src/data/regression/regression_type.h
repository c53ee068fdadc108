// The kinds of regression a DataSet can carry, with their stored numbers.
#pragma once

#include <cstdint>

namespace tarnwick {

/// A stored number above 7 is kept and refused when the regression is to be computed. Formulas: docs/regression.md.
enum class RegressionType : std::uint8_t {
  None = 0,
  Parabola = 1,    ///< least-squares parabola
  RobustLine = 2,  ///< resistant line through medians of the outer thirds
  Line = 3,        ///< least-squares straight line
  Spline = 4,      ///< cubic spline, sampled into the regression curve
  Smoother = 5,    ///< Gaussian kernel smoother, sampled into the regression curve
  ExponentialSmoothing = 6,
  RunningAverage = 7,
};

/// True for the kinds whose result is the regression curve, not a value per point.
constexpr bool HasRegressionCurve(RegressionType type) {
  return type == RegressionType::Spline || type == RegressionType::Smoother;
}

}  // namespace tarnwick
