// Whether residuals look like errors of measurement once the model has taken its share of them: tests that hold for small
// numbers of points, too. Knows residuals and derivatives; words nothing.
#pragma once

#include <cstddef>

#include "fit/fit_result.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick {

/// Residuals e of n points in the order of X are, near the minimum, e = M u with u independent errors and M = I - QQ' the
/// projection beside the derivatives J = QR. Each finding is the probability that independent normal errors lead so far:
///   alike, alternating: r = sum e_i e_(i+1) / sum e_i^2, by its exact mean and variance under M and a beta distribution
///     (Durbin & Watson, Biometrika 37 (1950), 409 and 58 (1971), 1);
///   lagged: ten such correlations, each in its deviations, as chi squared (Ljung & Box, Biometrika 65 (1978), 297);
///   shape: the F ratios of the lowest polynomials along the points that the model does not hold, each of several numbers of
///     them, the least probable times how many were tried (Seber & Lee, Linear Regression Analysis, 2003, chapter 4);
///   farthest: the greatest externally studentised residual, times n (Cook & Weisberg, Residuals and Influence, 1982).
/// Where residuals scatter more at one end of X or of the curve than at the other, each is taken in its own deviation first;
/// where that may be chance, what is found is what is found without that, too.
/// Nothing is found with fewer than three degrees of freedom.
ResidualFindings TestResiduals(const ResidualSample& sample);

/// What one of `many` DataSets shows, when any of them could have: chance leads that far so many times as often
/// (C. E. Bonferroni).
void AmongMany(std::size_t many, ResidualFindings& findings);

/// Chance leads there in less than one of a few hundred fits.
bool FollowsShape(const ResidualFindings& findings);
bool Alternates(const ResidualFindings& findings);
/// More than tenfold: the errors of the parameters, which take all points alike, are wrong.
bool ScattersUnequally(const ResidualFindings& findings);
/// Chance leads no point so far from the curve as one lies.
bool OnePointStandsOut(const ResidualFindings& findings);
/// It moves the parameters by more than their errors, too.
bool OnePointBends(const ResidualFindings& findings);

/// As much of a pattern, or a point that bends the curve so far, comes by chance in less than `chance` of all fits.
bool HintsAtPattern(const ResidualFindings& findings, double chance);
bool HintsAtPoint(const ResidualFindings& findings, double chance);

}  // namespace tarnwick
