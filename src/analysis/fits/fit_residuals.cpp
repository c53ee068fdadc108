#include "analysis/fits/fit_residuals.h"

#include <cmath>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "data/series/point_errors.h"
#include "fit/model/model_values.h"

namespace tarnwick {
namespace {

/// Numbers side by side: X, Y and the errors of both.
struct Rows {
  std::vector<double> x, y, y_error, x_error;

  void Add(double x_value, double y_value, double error_of_y, double error_of_x) {
    x.push_back(x_value);
    y.push_back(y_value);
    y_error.push_back(error_of_y);
    x_error.push_back(error_of_x);
  }
};

/// The curve that stands in for points brings no errors.
PointErrors ErrorsOfResiduals(const PointErrors& source, FitPointSource fitted) {
  PointErrors errors;
  if (fitted != FitPointSource::Points) return errors;
  if (HasYErrors(source)) errors.y.kind = ErrorKind::Column;
  if (HasXErrors(source)) errors.x.kind = ErrorKind::Column;
  return errors;
}

}  // namespace

void FitResiduals(const TDataSeries& source, TDataSeries& target) {
  Rows points;
  const PointErrors& errors = source.Errors();
  const FitPointSource fitted = ForEachFitPoint(source, [&](const Point& point, double y) {
    points.Add(point.x, y, YErrorOf(errors, point), XErrorOf(errors, point));
  });
  TCurFit model;
  model.SetSettings(source.Fit().Settings(), MarkModified::No);
  model.Prepare();
  const std::vector<double> values = ModelValues(model, points.x);

  Rows residuals;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double residual = points.y[i] - values[i];
    if (std::isfinite(residual))
      residuals.Add(points.x[i], residual, points.y_error[i], points.x_error[i]);
  }
  const PointErrors kept = ErrorsOfResiduals(errors, fitted);
  const bool duplicates_allowed = source.DuplicatesAllowed();
  const std::string x_column = source.Source().XDataColumn;
  const std::string y_column = "RES of " + source.Source().YDataColumn;
  target.BeginUpdate();
  target.Clear();
  target.SetDuplicatesAllowed(duplicates_allowed);
  target.Source().XDataColumn = x_column;
  target.Source().YDataColumn = y_column;
  target.SetErrors(kept);
  OwnErrorSpans own;
  if (HasYErrors(kept)) own.y = residuals.y_error;
  if (HasXErrors(kept)) own.x = residuals.x_error;
  target.AddPoints(residuals.x, residuals.y, own);
  target.EndUpdate();
}

}  // namespace tarnwick
