#!/usr/bin/env python3
"""Writes scipy_rows.h: what numpy and scipy make of the data of the tests. Run where scipy is installed; the tests need neither."""
import numpy as np
from scipy.interpolate import Akima1DInterpolator
from scipy.signal import correlate, lombscargle, periodogram, savgol_filter
from scipy.sparse import csc_matrix, diags
from scipy.sparse.linalg import spsolve


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


def numbers(values):
    return "{" + ", ".join(repr(float(v)) for v in values) + "}"


print("// Made by scipy_rows.py: what numpy and scipy make of the same data.\n#pragma once\n")
print("#include <cmath>\n#include <vector>\n\nnamespace tarnwick::rows {\n")
print("inline std::vector<double> Measured() {\n  std::vector<double> y;\n  for (int i = 0; i < 40; ++i)")
print("    y.push_back(3 + 0.05 * i + 4 * std::exp(-((i - 17) / 4.0) * ((i - 17) / 4.0)) + 0.3 * std::sin(11.0 * i) +")
print("                0.1 * std::sin(3.0 * i));\n  return y;\n}\n")
print("inline std::vector<double> Uneven() {\n  std::vector<double> x(40);\n  for (std::size_t i = 0; i < x.size(); ++i)")
print("    x[i] = 0.5 * static_cast<double>(i) + 0.2 * std::sin(5.0 * static_cast<double>(i));\n  return x;\n}\n")
print("struct SavGol {\n  int window, order, derivative;\n  std::vector<double> y;\n};\n")
print("inline const std::vector<SavGol> kSavGol = {")
for window, order, derivative in [(11, 2, 0), (7, 3, 1), (9, 4, 2)]:
    y = savgol_filter(measured(), window, order, deriv=derivative, delta=0.5)
    print(f"    {{{window}, {order}, {derivative}, {numbers(y)}}},")
print("};\n")
print(f"inline const std::vector<double> kArPls = {numbers(arpls(measured(), 100, 1e-6, 100))};\n")
print("struct Periodogram {\n  int quantity, window, trend;\n  std::size_t points;  // the first so many of the data\n  std::vector<double> y;\n};\n")
print("inline const std::vector<Periodogram> kPeriodograms = {")
windows = ["boxcar", "hann", "hamming", "blackman", "flattop"]
for quantity, window, trend, points in [(0, 1, 1, 40), (1, 2, 0, 37), (2, 3, 2, 40), (2, 4, 1, 31), (0, 0, 0, 40)]:
    y = spectrum(quantity, windows[window], [False, "constant", "linear"][trend], measured()[:points])
    print(f"    {{{quantity}, {window}, {trend}, {points}, {numbers(y)}}},")
print("};\n")
print(f"inline const std::vector<double> kLombAmplitude = {numbers(lomb(0))};\n")
print(f"inline const std::vector<double> kLombPower = {numbers(lomb(1))};\n")
print(f"inline const std::vector<double> kCorrelation = {numbers(correlation())};  // lags -5 to 5\n")
print(f"inline const std::vector<double> kAkima = {numbers(akima())};  // in steps of 0.3\n")
print("}  // namespace tarnwick::rows")
