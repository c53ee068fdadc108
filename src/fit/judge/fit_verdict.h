// The judgement of a fit: what a FitResult's numbers mean, in sentences for its user. Knows no model and no DataSet; computes
// no figure of its own.
#pragma once

#include <span>

#include "fit/fit_result.h"
#include "fit/judge/fit_circumstances.h"
#include "fit/judge/verdict_summary.h"

namespace tarnwick {

/// Needs everything of `result` but its verdict.
FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances);

/// Of several DataSets fitted together: `shares` are judged already, and what one of them says holds for all. Where one alone
/// tests nothing, the residuals of `whole` are those of all together.
FitVerdict JudgeJointFit(const FitResult& whole, const FitCircumstances& circumstances,
                         std::span<const FitShare> shares);

/// Of one of them, beside the whole with its verdict: what alone would be untested may be tested by all.
FitVerdict JudgeShare(const FitShare& share, const FitResult& whole);

}  // namespace tarnwick
