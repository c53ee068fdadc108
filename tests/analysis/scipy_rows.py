#!/usr/bin/env python3
"""What numpy and scipy make of the data of the tests: writes scipy_rows.h, or with --check FILE compares that one's numbers with
what the installed versions give. Ends with 77 where they are not installed; the other tests need neither."""
import re
import sys

try:
    import numpy as np
    import scipy
except ImportError:
    sys.exit(77)
from scipy.integrate import cumulative_trapezoid
from scipy.interpolate import Akima1DInterpolator
from scipy.signal import correlate, find_peaks, lombscargle, peak_widths, periodogram, savgol_filter
from scipy.sparse import csc_matrix, diags
from scipy.sparse.linalg import spsolve
from scipy.stats import f as f_distribution
from scipy.stats import ks_2samp, ttest_ind


def measured():
    i = np.arange(40.0)
    return 3 + 0.05 * i + 4 * np.exp(-((i - 17) / 4) ** 2) + 0.3 * np.sin(11 * i) + 0.1 * np.sin(3 * i)


def arpls(y, smoothness, ratio, rounds):
    """Baek et al., Analyst 140, 250 (2015)."""
    n = len(y)
    d = csc_matrix(np.diff(np.eye(n), 2, axis=0))
    h = smoothness * d.T @ d
    w = np.ones(n)
    for _ in range(rounds):
        z = spsolve(csc_matrix(diags(w) + h), w * y)
        below = (y - z)[y < z]
        m, s = below.mean(), below.std()
        wt = 1 / (1 + np.exp(np.minimum(2 * (y - z - (2 * s - m)) / s, 700)))
        if np.linalg.norm(w - wt) / np.linalg.norm(w) < ratio:
            break
        w = wt
    return z


def uneven():
    i = np.arange(40.0)
    return 0.5 * i + 0.2 * np.sin(5 * i)


def lomb(quantity):
    """Amplitude or power at the frequencies that 40 even steps would have."""
    x, y = uneven(), measured() - measured().mean()
    length = (x[-1] - x[0]) * 40 / 39
    power = np.concatenate([[0], lombscargle(x, y, 2 * np.pi * np.arange(1, 21) / length)])
    return np.sqrt(4 * power / 40) if quantity == 0 else 2 * power / 40


def spectrum(quantity, window, detrend, values):
    if quantity == 0:
        power = periodogram(values, 2.0, window, detrend=detrend, scaling="spectrum")[1]
        amplitude = np.sqrt(2 * power)
        amplitude[0] /= np.sqrt(2)
        if len(values) % 2 == 0:
            amplitude[-1] /= np.sqrt(2)
        return amplitude
    return periodogram(values, 2.0, window, detrend=detrend, scaling=["", "spectrum", "density"][quantity])[1]


def correlation():
    a, b = measured() - measured().mean(), np.roll(measured(), 3) - measured().mean()
    return correlate(b, a)[39 - 5:39 + 6] / np.sqrt((a @ a) * (b @ b))


def akima():
    x = uneven()
    return Akima1DInterpolator(x, measured())(np.minimum(x[0] + 0.3 * np.arange(np.floor((x[-1] - x[0]) / 0.3) + 1), x[-1]))


def polynomial():
    """Of degree 3 through x up to 5 and from 12 on."""
    x, y = uneven(), measured()
    chosen = (x <= 5) | (x >= 12)
    return np.polyval(np.polyfit(x[chosen], y[chosen], 3), x)


def comparison():
    """Measured values beside uneven X / 4: mean, deviation, quartiles, then t, F and Kolmogorov-Smirnov."""
    a, b = measured(), uneven() / 4
    welch = ttest_ind(b, a, equal_var=False)
    share = b.var(ddof=1) / a.var(ddof=1)
    tail = f_distribution.cdf(share, 39, 39)
    ks = ks_2samp(a, b, method="exact")
    return [a.mean(), a.std(ddof=1), *np.quantile(a, [0.25, 0.5, 0.75]), welch.statistic, welch.pvalue,
            share, 2 * min(tail, 1 - tail), ks.statistic, ks.pvalue]


def peaks():
    """Place, prominence and width at half of it of those above 0.5, in turn."""
    y = measured()
    places, found = find_peaks(y, prominence=0.5)
    return np.column_stack([places, found["prominences"], peak_widths(y, places, 0.5)[0]]).ravel()


def numbers(values):
    return "{" + ", ".join(repr(float(v)) for v in values) + "}"


def write(say):
    say("// Made by scipy_rows.py: what numpy and scipy make of the same data.\n#pragma once\n")
    say("#include <cmath>\n#include <vector>\n\nnamespace tarnwick::rows {\n")
    say("inline std::vector<double> Measured() {\n  std::vector<double> y;\n  for (int i = 0; i < 40; ++i)")
    say("    y.push_back(3 + 0.05 * i + 4 * std::exp(-((i - 17) / 4.0) * ((i - 17) / 4.0)) + 0.3 * std::sin(11.0 * i) +")
    say("                0.1 * std::sin(3.0 * i));\n  return y;\n}\n")
    say("inline std::vector<double> Uneven() {\n  std::vector<double> x(40);\n  for (std::size_t i = 0; i < x.size(); ++i)")
    say("    x[i] = 0.5 * static_cast<double>(i) + 0.2 * std::sin(5.0 * static_cast<double>(i));\n  return x;\n}\n")
    say("struct SavGol {\n  int window, order, derivative;\n  std::vector<double> y;\n};\n")
    say("inline const std::vector<SavGol> kSavGol = {")
    for window, order, derivative in [(11, 2, 0), (7, 3, 1), (9, 4, 2)]:
        y = savgol_filter(measured(), window, order, deriv=derivative, delta=0.5)
        say(f"    {{{window}, {order}, {derivative}, {numbers(y)}}},")
    say("};\n")
    say(f"inline const std::vector<double> kArPls = {numbers(arpls(measured(), 100, 1e-6, 100))};\n")
    say("struct Periodogram {\n  int quantity, window, trend;\n  std::size_t points;  // the first so many of the data\n  std::vector<double> y;\n};\n")
    say("inline const std::vector<Periodogram> kPeriodograms = {")
    windows = ["boxcar", "hann", "hamming", "blackman", "flattop"]
    for quantity, window, trend, points in [(0, 1, 1, 40), (1, 2, 0, 37), (2, 3, 2, 40), (2, 4, 1, 31), (0, 0, 0, 40)]:
        y = spectrum(quantity, windows[window], [False, "constant", "linear"][trend], measured()[:points])
        say(f"    {{{quantity}, {window}, {trend}, {points}, {numbers(y)}}},")
    say("};\n")
    say(f"inline const std::vector<double> kLombAmplitude = {numbers(lomb(0))};\n")
    say(f"inline const std::vector<double> kLombPower = {numbers(lomb(1))};\n")
    say(f"inline const std::vector<double> kCorrelation = {numbers(correlation())};  // lags -5 to 5\n")
    say(f"inline const std::vector<double> kAkima = {numbers(akima())};  // in steps of 0.3\n")
    say(f"inline const std::vector<double> kIntegral = {numbers(cumulative_trapezoid(measured(), uneven()))};\n")
    say(f"inline const std::vector<double> kSlopes = {numbers(np.diff(measured()) / np.diff(uneven()))};\n")
    say(f"inline const std::vector<double> kSums = {numbers(np.cumsum(measured()))};\n")
    say(f"inline const std::vector<double> kPolynomial = {numbers(polynomial())};\n")
    say(f"inline const std::vector<double> kCounts = {numbers(np.histogram(measured(), 7)[0])};\n")
    say(f"inline const std::vector<double> kComparison = {numbers(comparison())};\n")
    say(f"inline const std::vector<double> kPeaks = {numbers(peaks())};\n")
    say("}  // namespace tarnwick::rows")


def differing(text, other):
    """Numbers of both texts that are not alike."""
    number = r"[-+]?\d+(?:\.\d+)?(?:e[-+]?\d+)?"
    one, two = ([float(n) for n in re.findall(number, t)] for t in (text, other))
    if len(one) != len(two):
        return [(len(one), len(two))]
    return [(a, b) for a, b in zip(one, two) if not np.isclose(a, b, rtol=1e-7, atol=1e-11)]


if len(sys.argv) == 3 and sys.argv[1] == "--check":
    lines = []
    write(lines.append)
    with open(sys.argv[2]) as kept:
        wrong = differing("\n".join(lines), kept.read())
    print(f"numpy {np.__version__}, scipy {scipy.__version__}:", wrong or "the rows are theirs")
    sys.exit(bool(wrong))
write(print)
