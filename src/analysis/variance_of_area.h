// How sure a trapezoid integral is as it goes over its points. Mathematics; knows no DataSet.
#pragma once

#include <cmath>

namespace tarnwick {

/// Each value goes in with half the widths on both of its sides; values scatter independently of each other.
class VarianceOfArea {
 public:
  /// That up to the right point; `left` and `right` are the variances of the pair.
  double Take(double width, double left, double right) {
    settled_ += Square((last_width_ + width) / 2) * left;
    last_width_ = width;
    return settled_ + Square(width / 2) * right;
  }

 private:
  static double Square(double value) { return value * value; }

  double settled_ = 0;  // what no further point changes
  double last_width_ = 0;
};

}  // namespace tarnwick
