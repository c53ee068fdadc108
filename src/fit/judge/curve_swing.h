// How far a fitted curve strays from its points where there are none. Knows residuals; words nothing.
#pragma once

#include <span>

#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// The greatest excursion of the curve between two neighbouring points, beyond what the curve is at the two,
/// over its whole range at the points. A sine sampled at least twice a period, and a peak as wide at half its height
/// as the points are apart, stay below a half; what is sampled less swings freely. Looks into 4096 gaps at most; turns are
/// counted where that is all. Throws EIntegerDivision.
CurveSwing GreatestSwing(ModelResiduals& residuals, std::span<const double> x,
                         std::span<const double> values);

/// Too far to call the curve one that the points show.
bool SwingsFreely(const CurveSwing& swing);

/// A period of less than two points at even distances: one of more than two goes through the same points (C. E. Shannon, Proc.
/// IRE 37 (1949), 10).
bool OutrunsPoints(const CurveSwing& swing);

}  // namespace tarnwick
