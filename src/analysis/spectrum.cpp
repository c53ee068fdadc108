#include "analysis/spectrum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

#include "analysis/fourier.h"

namespace tarnwick {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

/// a0 - a1 cos + a2 cos 2 - ...; in the order of SpectrumWindow.
constexpr std::array<std::array<double, 5>, 5> kCosines = {{
    {1},
    {0.5, 0.5},
    {0.54, 0.46},
    {0.42, 0.5, 0.08},
    {0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368},
}};

/// The values less what is taken off.
std::vector<double> WithoutTrend(std::span<const double> x, std::span<const double> y,
                                 Trend trend) {
  std::vector<double> rest(y.begin(), y.end());
  if (trend == Trend::None) return rest;
  const auto n = static_cast<long double>(y.size());
  long double sum_x = 0;
  long double sum_y = 0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    sum_x += x[i];
    sum_y += y[i];
  }
  const long double mean_x = sum_x / n;
  const long double mean_y = sum_y / n;
  long double sum_xx = 0;
  long double sum_xy = 0;
  for (std::size_t i = 0; i < y.size(); ++i) {
    sum_xx += (x[i] - mean_x) * (x[i] - mean_x);
    sum_xy += (x[i] - mean_x) * (y[i] - mean_y);
  }
  const long double slope = trend == Trend::Line && sum_xx > 0 ? sum_xy / sum_xx : 0;
  for (std::size_t i = 0; i < y.size(); ++i)
    rest[i] = static_cast<double>(y[i] - mean_y - slope * (x[i] - mean_x));
  return rest;
}

/// From the squared amplitude of a sine to what is asked for; `resolution` is what one step of frequency of it spans.
double ValueOf(SpectrumOf of, double squared, double resolution) {
  switch (of) {
    case SpectrumOf::Amplitude:
      return std::sqrt(squared);
    case SpectrumOf::Power:
      return squared / 2;
    case SpectrumOf::Density:
      break;
  }
  return squared / 2 / resolution;
}

}  // namespace

std::vector<double> WindowValues(SpectrumWindow window, std::size_t n) {
  const std::array<double, 5>& cosines = kCosines.at(static_cast<std::size_t>(window));
  std::vector<double> values(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double angle = kTurn * static_cast<double>(i) / static_cast<double>(n);
    double sign = 1;
    for (std::size_t k = 0; k < cosines.size(); ++k, sign = -sign)
      values[i] += sign * cosines[k] * std::cos(static_cast<double>(k) * angle);
  }
  return values;
}

Spectrum EvenSpectrum(std::span<const double> y, double step, const SpectrumOptions& options) {
  const std::size_t n = y.size();
  std::vector<double> x(n);
  for (std::size_t i = 0; i < n; ++i) x[i] = static_cast<double>(i);
  std::vector<double> values = WithoutTrend(x, y, options.taken_off);
  const std::vector<double> window = WindowValues(options.window, n);
  long double sum = 0;
  long double squares = 0;
  for (std::size_t i = 0; i < n; ++i) {
    values[i] *= window[i];
    sum += window[i];
    squares += window[i] * window[i];
  }
  const auto points = static_cast<double>(n);
  Spectrum spectrum;
  spectrum.coherent_gain = static_cast<double>(sum) / points;
  spectrum.noise_width = static_cast<double>(points * squares / (sum * sum));
  values.resize(n * static_cast<std::size_t>(options.finer));  // zeros behind the data
  const std::vector<std::complex<double>> terms = FourierTerms(values);
  const double longer = step * static_cast<double>(values.size());
  const double resolution = spectrum.noise_width / (step * points);
  for (std::size_t j = 0; j < terms.size(); ++j) {
    const bool alone =
        j == 0 || 2 * j == values.size();  // has no counterpart at minus its frequency
    const double amplitude = std::abs(terms[j]) / static_cast<double>(sum);
    spectrum.frequency.push_back(static_cast<double>(j) / longer);
    // Power and density keep the sum over all frequencies that of the values' squares.
    const double squared = amplitude * amplitude * (alone ? 1 : 4);
    spectrum.y.push_back(options.of == SpectrumOf::Amplitude
                             ? std::sqrt(squared)
                             : ValueOf(options.of, alone ? 2 * squared : squared, resolution));
  }
  return spectrum;
}

Spectrum LombScargle(std::span<const double> x, std::span<const double> y,
                     const SpectrumOptions& options) {
  const auto points = static_cast<double>(x.size());
  const std::vector<double> values = WithoutTrend(x, y, options.taken_off);
  // The length that as many even steps would have.
  const double length = (x.back() - x.front()) * points / (points - 1);
  const double step = 1 / (length * options.finer);
  const std::size_t count = x.size() * static_cast<std::size_t>(options.finer) / 2 + 1;
  std::vector<double> phase(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) phase[i] = kTurn * step * (x[i] - x.front());
  const std::vector<std::complex<double>> terms = UnevenFourierTerms(phase, values, count);
  const std::vector<double> ones(x.size(), 1);
  const std::vector<std::complex<double>> twice = UnevenFourierTerms(phase, ones, 2 * count - 1);
  Spectrum spectrum;
  for (std::size_t j = 0; j < count; ++j) {
    const double c2 = twice[2 * j].real();
    const double s2 = -twice[2 * j].imag();
    const double angle =
        0.5 * std::atan2(s2, c2);  // of the time from which on sine and cosine are independent
    const double c = terms[j].real() * std::cos(angle) - terms[j].imag() * std::sin(angle);
    const double s = -terms[j].imag() * std::cos(angle) - terms[j].real() * std::sin(angle);
    const double long_way = std::hypot(c2, s2);
    const double cc = 0.5 * (points + long_way);
    const double ss = 0.5 * (points - long_way);
    const double power = 0.5 * (c * c / cc + (ss > 1e-9 * points ? s * s / ss : 0));
    spectrum.frequency.push_back(static_cast<double>(j) * step);
    const double squared = j == 0 ? 2 * power / points : 4 * power / points;
    spectrum.y.push_back(
        ValueOf(options.of, j == 0 && options.of != SpectrumOf::Amplitude ? 2 * squared : squared,
                1 / length));
  }
  return spectrum;
}

}  // namespace tarnwick
