// The model of a graph's DataSet as choosing a function and fitting leave it. Knows DataSets and models; runs no fit.
#pragma once

#include <cstddef>

#include "fit/model/fit_settings.h"

namespace tarnwick {

class TSeries;

/// True for what shows the outcome of a fit.
constexpr bool IsFitted(FitStatus status) {
  return status == FitStatus::cf_FinResult || status == FitStatus::cf_EveryStep;
}

/// Puts a ready-made function in place of the DataSet's model and draws it, at least as wide as the DataSet's line.
void TakeFitFunction(TSeries& series, const FitSettings& function);

/// Gives a model made from a typed formula what it starts with where the empty model's method and number of points still
/// stand: the Newton-type method, and a number of points that thins none of `points`.
void StartTypedModel(FitSettings& model, std::size_t points);

/// Puts edited settings in place of the model's; what only concerns the look of curve or report leaves the result valid.
void TakeFitSettings(TSeries& series, const FitSettings& settings);

}  // namespace tarnwick
