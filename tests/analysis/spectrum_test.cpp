#include "analysis/spectrum.h"

#include <cmath>
#include <complex>
#include <numbers>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/correlation.h"
#include "analysis/fourier.h"
#include "analysis/scipy_rows.h"

namespace tarnwick {
namespace {

using ::testing::DoubleNear;
using ::testing::Pointwise;

TEST(Fourier, TermsOfEveryLengthAreThoseOfTheirSum) {
  for (const std::size_t n : {1u, 2u, 3u, 59u, 60u, 106u, 211u}) {
    std::vector<double> y;
    for (std::size_t k = 0; k < n; ++k) y.push_back(std::cos(static_cast<double>(k * k)));
    const std::vector<std::complex<double>> terms = FourierTerms(y);
    ASSERT_EQ(terms.size(), n / 2 + 1);
    for (std::size_t j = 0; j < terms.size(); ++j) {
      std::complex<double> sum = 0;
      for (std::size_t k = 0; k < n; ++k)
        sum += y[k] * std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(j * k % n) /
                                          static_cast<double>(n));
      EXPECT_LT(std::abs(terms[j] - sum), 1e-11) << n << ' ' << j;
    }
  }
}

TEST(Spectrum, IsThatOfScipy) {
  for (const rows::Periodogram& row : rows::kPeriodograms) {
    SCOPED_TRACE(row.window);
    std::vector<double> y = rows::Measured();
    y.resize(row.points);
    const SpectrumOptions options = {static_cast<SpectrumOf>(row.quantity),
                                     static_cast<SpectrumWindow>(row.window),
                                     static_cast<Trend>(row.trend)};
    EXPECT_THAT(EvenSpectrum(y, 0.5, options).y, Pointwise(DoubleNear(1e-12), row.y));
  }
}

TEST(Spectrum, OfUnevenXIsThatOfScipy) {
  SpectrumOptions options;
  EXPECT_THAT(LombScargle(rows::Uneven(), rows::Measured(), options).y,
              Pointwise(DoubleNear(1e-10), rows::kLombAmplitude));
  options.of = SpectrumOf::Power;
  EXPECT_THAT(LombScargle(rows::Uneven(), rows::Measured(), options).y,
              Pointwise(DoubleNear(1e-10), rows::kLombPower));
}

TEST(Spectrum, TellsTheAmplitudeOfASineWhateverTheWindow) {
  std::vector<double> y(200);
  for (int i = 0; i < 200; ++i)
    y[static_cast<std::size_t>(i)] = 5 + 3 * std::sin(2 * std::numbers::pi * 0.1 * i);
  for (int window = 0; window < 5; ++window) {
    const SpectrumOptions options = {.window = static_cast<SpectrumWindow>(window), .finer = 3};
    const Spectrum spectrum = EvenSpectrum(y, 0.01, options);
    EXPECT_NEAR(spectrum.frequency[60], 10, 1e-9);
    EXPECT_NEAR(spectrum.y[60], 3, 1e-3) << window;
  }
}

// Harris, Proceedings of the IEEE 66 (1978), 51; of the flat top Heinzel, Ruediger and Schilling, Spectrum and spectral density
// estimation, 2002.
TEST(Spectrum, WindowsHaveTheGainAndTheNoiseOfTheTables) {
  std::vector<double> y(1000);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] = std::sin(0.5 * static_cast<double>(i));
  const struct {
    SpectrumWindow window;
    double gain, noise;
  } rows[] = {{SpectrumWindow::Rectangular, 1, 1},
              {SpectrumWindow::Hann, 0.5, 1.5},
              {SpectrumWindow::Hamming, 0.54, 1.3628},
              {SpectrumWindow::Blackman, 0.42, 1.7268},
              {SpectrumWindow::FlatTop, 0.2156, 3.7702}};
  for (const auto& row : rows) {
    const Spectrum spectrum = EvenSpectrum(y, 1, {.window = row.window});
    EXPECT_NEAR(spectrum.coherent_gain, row.gain, 5e-5) << row.gain;
    EXPECT_NEAR(spectrum.noise_width, row.noise, 5e-5) << row.gain;
  }
}

TEST(Correlation, IsThatOfScipy) {
  const std::vector<double> a = rows::Measured();
  std::vector<double> b = a;
  std::rotate(b.begin(), b.end() - 3, b.end());
  EXPECT_THAT(Correlation(a, b, 5, CorrelationOf::Coefficient),
              Pointwise(DoubleNear(1e-12), rows::kCorrelation));
  for (double& value : b) value *= 1e-15;
  EXPECT_THAT(Correlation(a, b, 5, CorrelationOf::Coefficient),
              Pointwise(DoubleNear(1e-12), rows::kCorrelation))
      << "of unlike sizes";
}

}  // namespace
}  // namespace tarnwick
