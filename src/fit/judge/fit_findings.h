// What the numbers of a FitResult come to, as yes or no: what the verdict rests on. Words nothing.
#pragma once

#include "fit/fit_result.h"

namespace tarnwick {

/// The fit began; else only its refusal is to be told.
bool Ran(const FitResult& result);
/// It ended where its method finds nothing better.
bool Settled(const FitResult& result);

/// How far a finishing Newton-type run would move the parameters, in standard errors (of all of them together); 0 when it was
/// not tried or would not improve, infinite when it would leave nothing of the sum of squares.
double DistanceToBestFit(const FitResult& result);

/// The fit has settled, and a finishing Newton-type run, where it was tried, found nothing better that matters.
bool HasConverged(const FitResult& result);

bool TooFewPoints(const FitResult& result);
bool NoBetterThanMean(const FitResult& result);
/// Of absolute errors: the points lie farther off than they allow.
bool ErrorsTooSmall(const FitResult& result);
/// ... or nearer.
bool ErrorsTooGreat(const FitResult& result);
bool PointsLost(const FitResult& result);
bool AllDetermined(const FitResult& result);
/// Nothing that the points show speaks against the model.
bool ModelHolds(const FitResult& result);

}  // namespace tarnwick
