// Other values of one parameter that give the very same curve: what is meant is the simpler one. Knows residuals; words nothing.
#pragma once

#include <numbers>
#include <span>
#include <vector>

#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// Of angles in radians, in degrees, and of cycles.
inline constexpr double kTurns[] = {2 * std::numbers::pi, 360, 1};

/// Whether the values, as many of each, are the same but for rounding (1e-9 of the greatest), and missing at the same places.
bool AreSameCurve(std::span<const double> one, std::span<const double> other);

/// Of varied parameters below 0 the value without its sign (a width of -0.7), of others the one within half
/// a turn (2 pi, 360 or 1) of 0 where that is less than half as far off (a phase of 307, or of -5.7), if the curve has it so at
/// the points and between them, and the bounds allow it.
/// `x` are the points, rising. Throws EIntegerDivision.
std::vector<EqualValue> FindEqualValues(ModelResiduals& residuals, std::span<const double> x,
                                        std::span<const double> values);

/// Of varied parameters below 0 that cannot change their sign alone, sets of those that can with another such one, with a third
/// parameter whose sign changes or that goes half a turn on, or with that one alone: a sine's amplitude and frequency beside its
/// phase, which comes to lie within half a turn of 0. Each parameter is in one set at most, and in none that is in `alone`. Only
/// models of up to twelve varied parameters are asked. As FindEqualValues else.
std::vector<EqualSet> FindEqualSets(ModelResiduals& residuals, std::span<const double> x,
                                    std::span<const double> values,
                                    std::span<const EqualValue> alone);

}  // namespace tarnwick
