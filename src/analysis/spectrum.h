// What a curve is made of by frequency: one-sided spectra by the fast Fourier transform where X is even, by least squares where
// it is not. Mathematics over spans; knows no DataSet.
#pragma once

#include <span>
#include <vector>

namespace tarnwick {

/// Cosine sums that let the ends of the values go to zero: F. J. Harris, Proceedings of the IEEE 66, 51 (1978); the flat top of
/// scipy and others (D'Antona & Ferrero, 2006).
enum class SpectrumWindow { Rectangular, Hann, Hamming, Blackman, FlatTop };

/// What the values are. Of a sine of amplitude A at one of the frequencies: A; A^2 / 2; A^2 / 2 by the resolution.
enum class SpectrumOf { Amplitude, Power, Density };

enum class Trend { None, Mean, Line };

struct SpectrumOptions {
  SpectrumOf of = SpectrumOf::Amplitude;
  SpectrumWindow window = SpectrumWindow::Hann;  ///< of even X alone
  Trend taken_off = Trend::Mean;
  int finer =
      1;  ///< frequencies that are told for each one that the length of the data can tell apart
};

struct Spectrum {
  std::vector<double> frequency;  ///< from 0 to half the (mean) number of points by X
  std::vector<double> y;
  double coherent_gain = 1;  ///< mean of the window: what amplitudes were divided by
  double noise_width = 1;  ///< equivalent noise bandwidth of the window, in steps of the resolution
};

/// The window's n values, the first of a period that would begin again at n.
std::vector<double> WindowValues(SpectrumWindow window, std::size_t n);

/// Of values at even steps: P. D. Welch's modified periodogram, of one piece (IEEE Transactions on Audio and Electroacoustics 15,
/// 70 (1967)). Two values or more.
Spectrum EvenSpectrum(std::span<const double> y, double step, const SpectrumOptions& options);

/// Of values at any rising X: the power of the sine that fits best at each frequency, N. R. Lomb, Astrophysics and Space Science
/// 39, 447 (1976), J. D. Scargle, Astrophysical Journal 263, 835 (1982). Two values at different X or more; O(n log n).
Spectrum LombScargle(std::span<const double> x, std::span<const double> y,
                     const SpectrumOptions& options);

}  // namespace tarnwick
