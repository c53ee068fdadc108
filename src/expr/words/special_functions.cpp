#include "expr/words/special_functions.h"

#include <boost/math/special_functions/digamma.hpp>
#include <cmath>
#include <complex>
#include <numbers>

#include "base/undefined.h"
#include "expr/words/faddeeva_nodes.h"

namespace tarnwick {
namespace {

bool IsPole(double x) {
  return x <= 0 && x == std::trunc(x);
}

// --- w(z)

using Complex = std::complex<double>;

/// (2 h / pi) sum weight i z / (z^2 - square). Nothing is subtracted from what is alike.
Complex NodeSum(const FaddeevaNodes& nodes, double x, double y) {
  const double squares = x * x + y * y;
  double real = 0;
  double imaginary = 0;
  for (std::size_t k = 0; k < kFaddeevaTerms; ++k) {
    const double a = (x - y) * (x + y) - nodes.square[k];
    const double b = 2 * x * y;
    const double share = nodes.weight[k] / (a * a + b * b);
    real += share * (squares + nodes.square[k]);
    imaginary += share * (squares - nodes.square[k]);
  }
  const double factor = 2 * kFaddeevaStep / std::numbers::pi;
  return {factor * y * real, factor * x * imaginary};
}

/// exp(-z^2), its size with the rounding of the squares put back.
Complex ExpOfMinusSquare(double x, double y) {
  const double xx = x * x;
  const double yy = y * y;
  const double lost = std::fma(y, y, -yy) - std::fma(x, x, -xx);
  const double size = std::exp(yy - xx) * (1 + lost);
  // Without a value far out, where std::polar may not be asked.
  return {size * std::cos(2 * x * y), -size * std::sin(2 * x * y)};
}

/// What the poles of the sum leave: 2 exp(-z^2) / (1 + sign exp(-2 pi i z / h)).
Complex PoleTerm(double sign, double x, double y) {
  constexpr double kGreatestExponent = 700;
  const double growth = 2 * std::numbers::pi * y / kFaddeevaStep;
  if (growth > kGreatestExponent) return 0;
  const Complex turn = std::polar(std::exp(growth), -2 * std::numbers::pi * x / kFaddeevaStep);
  return 2.0 * ExpOfMinusSquare(x, y) / (1.0 + sign * turn);
}

/// z beyond which one term, i / (sqrt(pi) z), is all.
constexpr double kFar = 1e8;

/// For x >= 0, y >= 0.
Complex FaddeevaInQuadrant(double x, double y) {
  if (x > kFar || y > kFar) {
    const double length = std::hypot(x, y);
    const double scale = std::numbers::inv_sqrtpi / length;
    return {scale * (y / length), scale * (x / length)};
  }
  if (y >= std::max(x, std::numbers::pi / kFaddeevaStep)) return NodeSum(kHalfNodes, x, y);
  const double place = x / kFaddeevaStep - std::floor(x / kFaddeevaStep);
  if (y >= x || place < 0.25 || place > 0.75) return PoleTerm(1, x, y) + NodeSum(kHalfNodes, x, y);
  return PoleTerm(-1, x, y) + NodeSum(kWholeNodes, x, y);
}

/// w' = -i / sqrt(pi) sum (2n + 1)!! / (2^n z^(2n + 2)), for y >= 0.
Complex SlopeFarOut(double x, double y) {
  constexpr int kSlopeTerms = 10;
  const Complex square = 1.0 / (Complex(x, y) * Complex(x, y));
  Complex sum = 0;
  for (int n = kSlopeTerms; n > 0; --n) sum = (1.0 + sum) * (n + 0.5) * square;
  return Complex(0, -std::numbers::inv_sqrtpi) * square * (1.0 + sum);
}

}  // namespace

Complex Faddeeva(double x, double y) {
  if (std::isnan(x) || std::isnan(y)) return {kUndefined, kUndefined};
  const Complex above = FaddeevaInQuadrant(std::abs(x), std::abs(y));
  // In the half plane above the real axis the values left and right are conjugate.
  const Complex upper = x < 0 ? std::conj(above) : above;
  if (y >= 0) return upper;
  return 2.0 * ExpOfMinusSquare(x, y) - std::conj(upper);
}

double GammaOf(double x) {
  return IsPole(x) ? kUndefined : std::tgamma(x);
}

double LnGammaOf(double x) {
  if (IsPole(x)) return kUndefined;
  int sign = 0;
  return lgamma_r(x, &sign);  // std::lgamma writes to a variable of the whole process
}

double DigammaOf(double x) {
  if (IsPole(x) || !std::isfinite(x)) return kUndefined;
  return boost::math::digamma(x);
}

double BesselJOf(double n, double x) {
  if (!(std::abs(n) <= kLargestBesselOrder)) return kUndefined;
  return ::jn(static_cast<int>(std::nearbyint(n)), x);
}

double FaddeevaReal(double x, double y) {
  return Faddeeva(x, y).real();
}

Complex FaddeevaSlope(double x, double y) {
  constexpr double kFarOut = 30;
  if (y >= 0 && std::max(std::abs(x), y) > kFarOut) return SlopeFarOut(x, y);
  return Complex(0, 2 * std::numbers::inv_sqrtpi) - 2.0 * Complex(x, y) * Faddeeva(x, y);
}

double VoigtOf(double x, double sigma, double gamma) {
  const double width = std::abs(sigma) * std::numbers::sqrt2;
  if (width == 0) return kUndefined;
  return FaddeevaReal(x / width, std::abs(gamma) / width) / (width * std::sqrt(std::numbers::pi));
}

}  // namespace tarnwick
