// The judgement of a fit: what a FitResult's numbers mean, in sentences for its user. Knows no model and no DataSet; computes
// no figure of its own.
#pragma once

#include "fit/fit_result.h"
#include "fit/judge/fit_circumstances.h"

namespace tarnwick {

/// Needs everything of `result` but its verdict.
FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances);

}  // namespace tarnwick
