#include "analysis/fourier.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <unsupported/Eigen/FFT>

namespace tarnwick {
namespace {

using Complex = std::complex<double>;
using Terms = std::vector<Complex>;

/// Up to this prime factor the library's own loops over a factor are quicker than two transforms of a power of two.
constexpr std::size_t kLargestFactor = 50;

std::size_t LargestPrimeFactor(std::size_t n) {
  std::size_t largest = 1;
  for (std::size_t p = 2; p * p <= n; ++p) {
    while (n % p == 0) {
      n /= p;
      largest = p;
    }
  }
  return std::max(largest, n);
}

/// The library's complex transform, both ways, of one length.
class Transform {
 public:
  explicit Transform(std::size_t size) : size_(static_cast<Eigen::DenseIndex>(size)) {}
  Terms Forward(const Terms& values) {
    Terms terms(values.size());
    library_.fwd(terms.data(), values.data(), size_);
    return terms;
  }
  Terms Inverse(const Terms& terms) {
    Terms values(terms.size());
    library_.inv(values.data(), terms.data(), size_);
    return values;
  }

 private:
  Eigen::FFT<double> library_;
  Eigen::DenseIndex size_;
};

/// exp(-i pi k^2 / n), the square taken modulo 2 n so that nothing is lost.
Complex Chirp(std::uint64_t k, std::uint64_t n) {
  const auto square = static_cast<double>(k * k % (2 * n));
  return std::polar(1.0, -std::numbers::pi * square / static_cast<double>(n));
}

/// jk = (j^2 + k^2 - (j - k)^2) / 2 makes the sum a convolution.
Terms BluesteinTerms(std::span<const double> y, std::size_t count) {
  const std::size_t n = y.size();
  const std::size_t size = std::bit_ceil(2 * n - 1);
  Terms values(size);
  Terms chirps(size);
  for (std::size_t k = 0; k < n; ++k) {
    const Complex chirp = Chirp(k, n);
    values[k] = y[k] * chirp;
    chirps[k] = std::conj(chirp);
    if (k > 0) chirps[size - k] = chirps[k];
  }
  Transform transform(size);
  Terms product = transform.Forward(values);
  const Terms other = transform.Forward(chirps);
  for (std::size_t i = 0; i < size; ++i) product[i] *= other[i];
  Terms terms = transform.Inverse(product);
  terms.resize(count);
  for (std::size_t j = 0; j < count; ++j) terms[j] *= Chirp(j, n);
  return terms;
}

/// A power of two of the size of the greatest value.
double SizeOf(std::span<const double> values) {
  double greatest = 0;
  for (const double value : values) greatest = std::max(greatest, std::abs(value));
  int exponent = 0;
  std::frexp(greatest, &exponent);
  return std::ldexp(1.0, exponent - 1);
}

}  // namespace

std::vector<std::complex<double>> FourierTerms(std::span<const double> y) {
  if (y.size() == 1) return {y.front()};  // the library takes no single value
  const std::size_t count = y.size() / 2 + 1;
  if (LargestPrimeFactor(y.size()) > kLargestFactor) return BluesteinTerms(y, count);
  Eigen::FFT<double> library;
  library.SetFlag(Eigen::FFT<double>::HalfSpectrum);
  Terms terms(y.size());
  library.fwd(terms.data(), y.data(), static_cast<Eigen::DenseIndex>(y.size()));
  terms.resize(count);
  return terms;
}

std::vector<double> LaggedProducts(std::span<const double> a, std::span<const double> b,
                                   std::size_t count) {
  const std::size_t size = std::bit_ceil(a.size() + count);
  // Both in one transform, as real and imaginary part; of like size, since either is rounded by the size of both.
  const double unit_a = SizeOf(a), unit_b = SizeOf(b);
  Terms values(size);
  for (std::size_t i = 0; i < a.size(); ++i) values[i] = {a[i] / unit_a, b[i] / unit_b};
  Transform transform(size);
  const Terms terms = transform.Forward(values);
  Terms products(size);
  for (std::size_t i = 0; i < size; ++i) {
    const Complex mirrored = std::conj(terms[(size - i) % size]);
    const Complex of_a = 0.5 * (terms[i] + mirrored);
    const Complex of_b = Complex(0, -0.5) * (terms[i] - mirrored);
    products[i] = std::conj(of_a) * of_b;
  }
  const Terms sums = transform.Inverse(products);
  std::vector<double> lagged(count);
  for (std::size_t j = 0; j < count; ++j) lagged[j] = sums[j].real() * unit_a * unit_b;
  return lagged;
}

std::vector<std::complex<double>> UnevenFourierTerms(std::span<const double> phase,
                                                     std::span<const double> y, std::size_t count) {
  // Each value is spread as a Gaussian over the nearest 2 kReach points of a grid twice as fine as the terms ask for; the
  // transform's terms are then divided by those of the Gaussian.
  constexpr int kReach = 12;
  const std::size_t grid = std::bit_ceil(std::max<std::size_t>(4 * count, 4 * kReach));
  const auto size = static_cast<double>(grid);
  const double modes = size / 2;
  const double tau = std::numbers::pi * kReach / (modes * modes * 2 * (2 - 0.5));
  const double step = 2 * std::numbers::pi / size;
  std::vector<double> spread(grid);
  for (std::size_t k = 0; k < y.size(); ++k) {
    const double nearest = std::floor(phase[k] / step);
    for (int i = 1 - kReach; i <= kReach; ++i) {
      const double away = phase[k] - (nearest + i) * step;
      const auto place = static_cast<std::size_t>(nearest + i + size) % grid;
      spread[place] += y[k] * std::exp(-away * away / (4 * tau));
    }
  }
  std::vector<std::complex<double>> terms = FourierTerms(spread);
  terms.resize(count);
  const double scale = std::sqrt(std::numbers::pi / tau) / size;
  for (std::size_t j = 0; j < count; ++j) {
    const auto order = static_cast<double>(j);
    terms[j] *= scale * std::exp(order * order * tau);
  }
  return terms;
}

}  // namespace tarnwick
