#include "analysis/fit_residuals.h"

#include <cmath>
#include <string>
#include <vector>

#include "analysis/fit_job.h"
#include "fit/model/model_values.h"

namespace tarnwick {
void FitResiduals(const TDataSeries& source, TDataSeries& target) {
  FitRunOptions options;
  options.points = FitPointChoice::All;
  const FitJob job = PrepareFit(source, options);
  TCurFit model;
  model.SetSettings(job.settings, false);
  model.Prepare();
  const std::vector<double> values = ModelValues(model, job.x);

  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t i = 0; i < job.x.size(); ++i) {
    const double residual = job.y[i] - values[i];
    if (!std::isfinite(residual)) continue;
    x.push_back(job.x[i]);
    y.push_back(residual);
  }
  const bool duplicates_allowed = source.DuplicatesAllowed();
  const std::string x_column = source.Source().XDataColumn;
  const std::string y_column = "RES of " + source.Source().YDataColumn;
  target.BeginUpdate();
  target.Clear();
  target.SetDuplicatesAllowed(duplicates_allowed);
  target.Source().XDataColumn = x_column;
  target.Source().YDataColumn = y_column;
  target.AddPoints(x, y);
  target.EndUpdate();
}

}  // namespace tarnwick
