// A polynomial through what lies between peaks, as their base line. Mathematics over spans; knows no DataSet.
#pragma once

#include <span>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {

/// From `begin` to `end` of X, both taking part.
struct XRegion {
  double begin = 0;
  double end = 0;
};

struct PolynomialLine {
  std::vector<double> y;          ///< at every X
  std::size_t points = 0;         ///< that it was made from
  double deviation = kUndefined;  ///< of these about it; where there are more than it needs
  /// offset + slope X, of degree 0 and 1.
  double offset = kUndefined;
  double slope = kUndefined;
};

/// The polynomial of least squares through the points in any of the regions (none: through all), by orthogonal polynomials:
/// G. E. Forsythe, J. SIAM 5, 74 (1957). Values are finite, the degree 0 to 9. Throws Error, a sentence, where the regions hold
/// fewer different X than it needs.
PolynomialLine FitPolynomialLine(std::span<const double> x, std::span<const double> y,
                                 std::span<const XRegion> regions, int degree);

}  // namespace tarnwick
