// What a fit's verdict has to know of how it was asked for, from the job and its model. Knows jobs; judges nothing.
#pragma once

#include <span>

#include "analysis/fits/fit_part.h"
#include "fit/judge/fit_circumstances.h"

namespace tarnwick {

/// As far as it shows before the fit.
FitCircumstances CircumstancesOf(const FitPart& part);

/// Adds where the model has no value with the starting values, and why that may be. Throws EIntegerDivision.
void MeasureStart(FitPart& part, FitCircumstances& about);

/// Adds the points that count for next to nothing with the weights as they now are, under a loss.
void MeasureOutliers(const FitPart& part, FitCircumstances& about);

/// Those of several DataSets fitted as one.
FitCircumstances Together(std::span<const FitCircumstances> parts);

/// Numbers whose squares, with what is multiplied to them, are lost lie below this.
inline constexpr double kSmallestSquared = 1e-140;

}  // namespace tarnwick
