// Values over X made smoother, and their smooth derivatives. Mathematics over spans; knows no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "base/cancel_point.h"

namespace tarnwick {

/// Of the polynomials that are fitted to a window of neighbouring points.
struct LocalPolynomial {
  int window = 11;     ///< points, odd, more than `order`
  int order = 2;       ///< degree, 0 to 9
  int derivative = 0;  ///< 0 to 2, not above `order`
};

struct Smoothed {
  std::vector<double> y;
  /// Standard deviation of the result by that of the values, in the middle of the points, where each scatters on its own.
  double noise_gain = 0;
};

/// The largest odd number of points among so many; below 1 for none.
int LargestWindow(std::size_t points);

/// Throws Error, a sentence, for a window that is not odd, or wider than so many points.
void CheckWindow(int window, std::size_t points);

/// Whether no step of X, which has two values or more, differs from their mean by more than `share` of it.
bool IsEvenlySpaced(std::span<const double> x, double share);

/// The value, or the derivative by X, at each point of the polynomial that fits the window around it best by least squares;
/// in the
/// outer halves of the first and last window that of those windows' polynomials. Savitzky & Golay, Analytical Chemistry 36, 1627
/// (1964); where X is not evenly spaced each window is fitted on its own. `x` rises; what a window with too few different X
/// has no
/// polynomial for is undefined. Throws Error for an impossible window, or one wider than the points.
Smoothed SmoothByPolynomials(std::span<const double> x, std::span<const double> y,
                             const LocalPolynomial& local, const CancelPoint& cancel = {});

/// The median of the `window` values around each one; of as many on both sides as there are towards the ends. Tukey, Exploratory
/// Data Analysis (1977). Throws Error for a window that is not odd, or wider than the values.
std::vector<double> RunningMedian(std::span<const double> y, int window,
                                  const CancelPoint& cancel = {});

}  // namespace tarnwick
