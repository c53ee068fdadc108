// The mathematics of the regression types: fits and smoothers over the points of a chain. Knows no DataSet. Formulas and
// sources: docs/regression.md. Points with an undefined or infinite value take no part in any of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "data/points/point_chain.h"
#include "data/regression/regression_type.h"

namespace tarnwick {

/// y = a u^2 + b u + c with u = (x - center) / scale: a polynomial in X in a form that keeps its digits far from 0.
struct Quadratic {
  double center = 0;
  double scale = 1;
  double a = 0;
  double b = 0;
  double c = 0;
  double operator()(double x) const {
    const double u = (x - center) / scale;
    return (a * u + b) * u + c;
  }
};

/// Least-squares parabola by discrete orthogonal polynomials; a line for two different X, the mean for one. Undefined
/// without points.
Quadratic FitParabola(const PointChain& points);

/// Least-squares straight line (a = 0); the mean for one X. Undefined without points.
Quadratic FitLine(const PointChain& points);

/// Tukey's resistant line: its slope makes the median residuals of the outer thirds equal, its intercept makes the median
/// of all residuals 0. The mean's place is taken by the median for one X. Undefined without points.
Quadratic FitRobustLine(const PointChain& points);

/// What one of the three kinds above leads to; nothing for the others.
std::optional<Quadratic> RegressionPolynomial(const PointChain& points, RegressionType type);

/// R(first) = Y(first), R(i) = alpha Y(i) + (1 - alpha) R(i - 1), into the regression values.
void SmoothExponentially(PointChain& points, double alpha);

/// Mean of the last truncation(1 / alpha) Y, of fewer at the start, into the regression values. Throws Error "Invalid
/// Running Average limit" when the window is shorter than 2.
void AverageRunning(PointChain& points, double alpha);

/// Evaluates the polynomial into the regression values.
void EvaluateInto(PointChain& points, const Quadratic& polynomial);

/// Where a regression curve is sampled: from x_min in `steps` steps to x_max.
struct CurveSampling {
  double x_min = 0;
  double x_max = 0;
  std::int32_t steps = 0;

  /// The most steps worth taking over so many points: 10000 and 10 for each point, a million at most. So the memory of a
  /// curve is bounded by that of its points, whatever number of steps a file names.
  static std::int32_t MostSteps(std::size_t points);
  /// The distance of samples; not positive or undefined when there is nothing to sample.
  double Step() const;
  /// x_min, x_min + h, … while X <= x_max + 1e-5 h; empty when the step is not positive.
  std::vector<double> Abscissae() const;
};

/// Cubic spline through the points, whose second derivatives go into the regression values. Both ends have the first
/// derivative `end_slope`, or second derivative 0 when end_slope is 9.9e29 or more. The curve is empty for one point.
PointChain SplineCurve(PointChain& points, const CurveSampling& sampling, double end_slope);

/// Kernel smoother with a Gaussian of standard deviation h, the distance of samples.
PointChain SmoothedCurve(const PointChain& points, const CurveSampling& sampling);

}  // namespace tarnwick
