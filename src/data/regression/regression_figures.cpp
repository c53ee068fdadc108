#include "data/regression/regression_figures.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "data/regression/regression.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 8;

bool HasTwoX(const PointChain& points) {
  double least = std::numeric_limits<double>::infinity();
  double greatest = -least;
  points.ForEachPoint([&](double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    least = std::min(least, x);
    greatest = std::max(greatest, x);
  });
  return least < greatest;
}

/// In powers of X itself, by extended numbers: far from X = 0 great terms of opposite sign meet.
RegressionFigures InPowersOfX(const Quadratic& polynomial) {
  const long double center = polynomial.center;
  const long double square =
      polynomial.a / (static_cast<long double>(polynomial.scale) * polynomial.scale);
  const long double slope = static_cast<long double>(polynomial.b) / polynomial.scale;
  RegressionFigures figures;
  figures.intercept = static_cast<double>((square * center - slope) * center + polynomial.c);
  figures.slope = static_cast<double>(slope - 2 * square * center);
  return figures;
}

}  // namespace

std::optional<RegressionFigures> FiguresOf(const PointChain& points, RegressionType type) {
  const std::optional<Quadratic> polynomial = RegressionPolynomial(points, type);
  if (!polynomial || !HasTwoX(points)) return std::nullopt;
  RegressionFigures figures = InPowersOfX(*polynomial);
  if (type == RegressionType::Parabola)
    figures.curvature = polynomial->a / polynomial->scale / polynomial->scale;
  return figures;
}

std::string FiguresText(const RegressionFigures& figures) {
  const auto told = [](double value) { return GeneralText(value, kDigits); };
  return std::string("Y = intercept + slope X") + (figures.curvature ? " + curvature X²" : "") +
         ": intercept " + told(figures.intercept) + ", slope " + told(figures.slope) +
         (figures.curvature ? ", curvature " + told(*figures.curvature) : "") + ".";
}

}  // namespace tarnwick
