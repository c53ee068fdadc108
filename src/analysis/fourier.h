// Sums of values times turning phases: by the fast Fourier transform, and at uneven moments. Mathematics over spans; knows no
// DataSet. The library of the transform stands in fourier.cpp alone.
#pragma once

#include <complex>
#include <span>
#include <vector>

namespace tarnwick {

/// The first n / 2 + 1 of the terms sum over k of y[k] exp(-2 pi i j k / n), n values, at least one. O(n log n) for every n:
/// where n has a large prime factor by the convolution of L. I. Bluestein, IEEE Transactions on Audio and Electroacoustics 18,
/// 451 (1970).
std::vector<std::complex<double>> FourierTerms(std::span<const double> y);

/// y[j] for j below `count` of the circular convolution-free product sum over k of a[k] b[k + j]: how alike `a` is to `b` moved
/// by j. Beyond the ends both are 0; a, b have one size.
std::vector<double> LaggedProducts(std::span<const double> a, std::span<const double> b,
                                   std::size_t count);

/// The terms sum over k of y[k] exp(-i j phase[k]) for j = 0 ... count - 1, phases from 0 to below 2 pi, to a part in 1e11 of the
/// sum of |y|. L. Greengard & J.-Y. Lee, SIAM Review 46, 443 (2004).
std::vector<std::complex<double>> UnevenFourierTerms(std::span<const double> phase,
                                                     std::span<const double> y, std::size_t count);

}  // namespace tarnwick
