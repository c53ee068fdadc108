#include "expr/words/special_functions.h"

#include <array>
#include <boost/math/special_functions/digamma.hpp>
#include <cmath>
#include <complex>
#include <numbers>

#include "base/undefined.h"

namespace tarnwick {
namespace {

bool IsPole(double x) {
  return x <= 0 && x == std::trunc(x);
}

// --- w(z)

using Complex = std::complex<double>;

constexpr std::size_t kTerms = 12;
/// sqrt(pi / 12)
constexpr double kStep = 0.51166335397324424;

struct Nodes {
  std::array<double, kTerms> square;  // of the abscissae
  std::array<double, kTerms> weight;  // exp(-square)
};

/// Abscissae (k + offset) h.
Nodes MakeNodes(double offset) {
  Nodes nodes{};
  for (std::size_t k = 0; k < kTerms; ++k) {
    const double at = (static_cast<double>(k) + offset) * kStep;
    nodes.square[k] = at * at;
    nodes.weight[k] = std::exp(-nodes.square[k]);
  }
  return nodes;
}

/// (2 h / pi) sum weight i z / (z^2 - square) from term `first` on. Nothing is subtracted from what is alike.
Complex NodeSum(const Nodes& nodes, std::size_t first, double x, double y) {
  const double squares = x * x + y * y;
  double real = 0;
  double imaginary = 0;
  for (std::size_t k = first; k < kTerms; ++k) {
    const double a = (x - y) * (x + y) - nodes.square[k];
    const double b = 2 * x * y;
    const double share = nodes.weight[k] / (a * a + b * b);
    real += share * (squares + nodes.square[k]);
    imaginary += share * (squares - nodes.square[k]);
  }
  const double factor = 2 * kStep / std::numbers::pi;
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
  const double growth = 2 * std::numbers::pi * y / kStep;
  if (growth > kGreatestExponent) return 0;
  const Complex turn = std::polar(std::exp(growth), -2 * std::numbers::pi * x / kStep);
  return 2.0 * ExpOfMinusSquare(x, y) / (1.0 + sign * turn);
}

/// z beyond which one term, i / (sqrt(pi) z), is all.
constexpr double kFar = 1e8;

/// For x >= 0, y >= 0.
Complex FaddeevaInQuadrant(double x, double y) {
  static const Nodes kWhole = MakeNodes(0);
  static const Nodes kHalf = MakeNodes(0.5);
  if (x > kFar || y > kFar) {
    const double length = std::hypot(x, y);
    const double scale = std::numbers::inv_sqrtpi / length;
    return {scale * (y / length), scale * (x / length)};
  }
  if (y >= std::max(x, std::numbers::pi / kStep)) return NodeSum(kHalf, 0, x, y);
  const double place = x / kStep - std::floor(x / kStep);
  if (y >= x || place < 0.25 || place > 0.75) return PoleTerm(1, x, y) + NodeSum(kHalf, 0, x, y);
  const double squares = x * x + y * y;
  const double factor = kStep / std::numbers::pi / squares;
  return PoleTerm(-1, x, y) + Complex(factor * y, factor * x) + NodeSum(kWhole, 1, x, y);
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
  return FaddeevaReal(x / width, gamma / width) / (width * std::sqrt(std::numbers::pi));
}

}  // namespace tarnwick
