// What the verdict says beyond its sentence: figures, and what can be done. Computes no figure.
#pragma once

#include <string>
#include <vector>

#include "fit/fit_result.h"
#include "fit/judge/fit_circumstances.h"

namespace tarnwick {

/// The most important first; of a fit that did not begin only what concerns its model and points.
std::vector<std::string> VerdictNotes(const FitResult& result, const FitCircumstances& about);

}  // namespace tarnwick
