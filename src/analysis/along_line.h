// What is summed and differenced along a line that turns back, in the order in which it joins its points. Mathematics over
// columns; knows no DataSet.
#pragma once

#include <vector>

namespace tarnwick {

/// Points in the order of a line, Y above the base line.
struct LineColumns {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> variance;  ///< of Y; empty where none is known, undefined of a point without
};

/// The same of what was computed from it; `y_error` instead of a variance.
struct LineResult {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> y_error;
};

/// What the line encloses, closed from its last point straight to its first: the shoelace formula (A. L. F. Meister, 1769),
/// without a sign.
double AreaEnclosed(const LineColumns& line);

/// The trapezoid area up to each point but the first: of a pair along which X falls it is counted off.
LineResult IntegralAlong(const LineColumns& line);
/// The sum of Y up to each point.
LineResult SumAlong(const LineColumns& line);
/// dY/dX between neighbours of different X, in the middle of each pair.
LineResult SlopesAlong(const LineColumns& line);

}  // namespace tarnwick
