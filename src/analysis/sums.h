// Sums over the points of a DataSet above its base line.
#pragma once

#include "data/series/data_series.h"

namespace tarnwick {

/// Sum of corrected Y.
double Sum(const TDataSeries& series);

/// Trapezoid area between the points and the base line; 0 for fewer than two points.
double Area(const TDataSeries& series);

}  // namespace tarnwick
