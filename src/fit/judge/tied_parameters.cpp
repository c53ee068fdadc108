#include "fit/judge/tied_parameters.h"

#include <cstddef>

#include "base/undefined.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

std::vector<TiedParameter> TiedParameters(const FitSettings& model, std::span<const double> values,
                                          const FitStatistics& statistics) {
  std::vector<TiedParameter> tied;
  FitSettings settings = model;
  settings.templates.clear();
  std::size_t next = 0;
  for (ParameterSettings& one : settings.parameters) {
    if (one.Vary && one.Tie.empty() && next < values.size()) one.Value = values[next++];
  }
  for (const ParameterSettings& one : settings.parameters) {
    if (one.Tie.empty()) continue;
    settings.Expression = one.Tie;
    TCurFit tie;
    tie.SetSettings(settings, MarkModified::No);
    tie.Prepare();
    const bool has_errors = !statistics.determined_covariance.empty();
    tied.push_back(
        {one.Name, tie.Value(0), has_errors ? CurveDeviation(tie, statistics, 0) : kUndefined});
  }
  return tied;
}

}  // namespace tarnwick
