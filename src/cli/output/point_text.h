// Points, curves and files as the batch program prints them.
#pragma once

#include "cli/output/output.h"
#include "graph/series.h"

namespace tarnwick::cli {

/// `id,x,y,corrected,regression`, one point a line as the DataSet's line goes, or the JSON list "points"; with `y_error` and
/// `x_error` behind them where the DataSet has errors.
void PrintPoints(const TSeries& series, Output& output);
/// `x,value`, one sample of the regression curve a line, or the JSON list "curve".
void PrintCurve(const TDataSeries& series, Output& output);
/// "regression_figures" where the regression has a slope: "intercept", "slope", and "curvature" of a parabola.
void AddRegressionFigures(const TDataSeries& series, Json& document);
/// What the DataSet's regression computes: the curve for those that have one (as JSON the points too), else the points.
void PrintRegression(const TSeries& series, Output& output);

}  // namespace tarnwick::cli
