// What is computed from a DataSet's points: area and sum, and DataSets: integral, running sum, probability density,
// derivative. Each of these clears its target, fills it and names its columns. Knows no graph; a source may be its own
// target. Errors of Y go on into what is a sum of Y, as errors of values independent of each other; those of X do not.
// Where a way of the line is given that is not in order of X, area, integral, sum and derivative go along it (along_line.h), and
// the new DataSet's points come in that order. All go straight across gaps.
#pragma once

#include <cstdint>
#include <span>

#include "data/points/line_way.h"
#include "data/series/data_series.h"

namespace tarnwick {

/// Trapezoid area between the points and the base line; 0 for fewer than two points. Of a line in the order in which the points
/// came what it encloses.
double AreaOf(const TDataSeries& source, const LineWay& way = {});
/// The same of columns as long as each other, above 0.
double AreaBelow(std::span<const double> x, std::span<const double> y);
/// Sum of corrected Y.
double SumOf(const TDataSeries& source);

/// Running trapezoid integral between points and base line, at every X but the first. From a point without an error above 0 on
/// it has none.
void Integral(const TDataSeries& source, TDataSeries& target, const LineWay& way = {});

/// Running sum of corrected Y, at every X. Errors as of the integral.
void RunningSum(const TDataSeries& source, TDataSeries& target, const LineWay& way = {});

/// Density of corrected Y over `bins` bins of width (max - min) / (bins - 1), integrating to 1. The target stays empty when
/// bins < 3 or all values are equal. Undefined and infinite values are left out. Without errors.
void ProbabilityDensity(const TDataSeries& source, TDataSeries& target, std::int32_t bins);

/// Slope between neighbours with rising X, less the base line's, at the middle of each pair. Walks the regression curve where
/// the regression has one, else the points; uses regression values when there is a regression, which is brought up to
/// date first (what it throws comes through). Errors only where there is no regression.
void Derivative(TDataSeries& source, TDataSeries& target, const LineWay& way = {});

}  // namespace tarnwick
