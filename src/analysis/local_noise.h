// How much the values of a curve scatter, as a whole and where a point stands. Mathematics over spans; knows no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "analysis/peak_figures.h"

namespace tarnwick {

/// The standard deviation of the scatter of values `lag` points apart, at least 1: the median of how far each lies off the
/// straight line through the two so far to its left and right, scaled as for normal scatter. Curves that bend little over that
/// way do not count. 0 for fewer than 2 lag + 1 points. After the DER_SNR of F. Stoehr et al. (Astronomical Data Analysis
/// Software and Systems XVII, 2008), for any X.
double NoiseOf(const PeakCurve& curve, std::size_t lag = 1);

/// The noise at each point of a curve, whose spans it borrows: its error, where it has one above 0; otherwise the scatter of
/// the 63 points around it, but never less than that of the whole curve, nor more than this by the root of Y by the median of Y
/// where that is above 0. Neighbours of values that were smoothed scatter less
/// than those far apart: both are then enlarged as the scatter of points `Lag()` apart is larger.
class LocalNoise {
 public:
  /// `errors` are as many as the points, NaN for none; or empty.
  LocalNoise(const PeakCurve& curve, std::span<const double> errors);

  double At(std::size_t index) const;
  double Overall() const { return gain_ * of_neighbours_; }
  /// 1 where neighbours scatter on their own.
  std::size_t Lag() const { return lag_; }
  bool HasError(std::size_t index) const;

 private:
  /// Lines close by are not to pass for noise: counts scatter by the root of Y, and no more is believed.
  double MostAt(double y) const;

  PeakCurve curve_;
  std::span<const double> errors_;
  std::size_t lag_ = 1;
  double of_neighbours_ = 0;
  double middle_ = 0;  // median of Y
  double gain_ = 1;
};

/// The peaks whose prominence is at least so many times the noise where they stand, in order of X.
std::vector<Summit> SummitsAbove(const PeakCurve& curve, const LocalNoise& noise, double times);

}  // namespace tarnwick
