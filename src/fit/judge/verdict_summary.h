// The verdict's one sentence: how the fit ended and what the data say of it, the gravest first. Computes no figure.
#pragma once

#include <string>

#include "fit/fit_result.h"
#include "fit/judge/fit_circumstances.h"

namespace tarnwick {

/// Of a fit that did not begin: why.
std::string VerdictSummary(const FitResult& result, const FitCircumstances& about);

}  // namespace tarnwick
