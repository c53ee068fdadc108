#!/usr/bin/env python3
"""Writes scipy_rows.h: what numpy and scipy make of the data of the tests. Run where scipy is installed; the tests need neither."""
import numpy as np
from scipy.signal import savgol_filter
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


def numbers(values):
    return "{" + ", ".join(repr(float(v)) for v in values) + "}"


print("// Made by scipy_rows.py: what numpy and scipy make of the same data.\n#pragma once\n")
print("#include <cmath>\n#include <vector>\n\nnamespace tarnwick::rows {\n")
print("inline std::vector<double> Measured() {\n  std::vector<double> y;\n  for (int i = 0; i < 40; ++i)")
print("    y.push_back(3 + 0.05 * i + 4 * std::exp(-((i - 17) / 4.0) * ((i - 17) / 4.0)) + 0.3 * std::sin(11.0 * i) +")
print("                0.1 * std::sin(3.0 * i));\n  return y;\n}\n")
print("struct SavGol {\n  int window, order, derivative;\n  std::vector<double> y;\n};\n")
print("inline const std::vector<SavGol> kSavGol = {")
for window, order, derivative in [(11, 2, 0), (7, 3, 1), (9, 4, 2)]:
    y = savgol_filter(measured(), window, order, deriv=derivative, delta=0.5)
    print(f"    {{{window}, {order}, {derivative}, {numbers(y)}}},")
print("};\n")
print(f"inline const std::vector<double> kArPls = {numbers(arpls(measured(), 100, 1e-6, 100))};\n")
print("}  // namespace tarnwick::rows")
