// Functions of mathematics beyond those of every pocket calculator. Knows numbers only; undefined (NaN) where one has no value.
#pragma once

#include <complex>

namespace tarnwick {

/// Gamma(x); undefined at 0 and the negative whole numbers.
double GammaOf(double x);
/// ln |Gamma(x)|; undefined at 0 and the negative whole numbers.
double LnGammaOf(double x);
/// The derivative of LnGammaOf.
double DigammaOf(double x);
/// The Bessel function J_n(x) of the first kind, n rounded; undefined where |n| exceeds kLargestBesselOrder.
double BesselJOf(double n, double x);
inline constexpr double kLargestBesselOrder = 10000;

/// w(x + iy) = exp(-z^2) erfc(-iz), its real and its imaginary part each to 3e-14 of itself for y >= 0; below, where
/// w(z) = 2 exp(-z^2) - w(-z), to as much of the greater term. By modified trapezoidal rules with 11 terms: M. Al Azah,
/// S. N. Chandler-Wilde, SIAM J. Numer. Anal. 59 (2021), 2346.
std::complex<double> Faddeeva(double x, double y);
double FaddeevaReal(double x, double y);
/// w'(z) = 2i / sqrt(pi) - 2 z w(z); far out, where that cancels, by its asymptotic series.
std::complex<double> FaddeevaSlope(double x, double y);

/// A Gaussian of standard deviation |sigma|, convolved with a Lorentzian of half width at half height |gamma|, both of area 1:
/// like those two by themselves it is the same for either sign of its widths. Undefined for a sigma of 0.
double VoigtOf(double x, double sigma, double gamma);

}  // namespace tarnwick
