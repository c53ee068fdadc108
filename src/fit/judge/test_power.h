// Whether the points of a fit could have shown that its model is wrong: where nothing was found, what that is worth. Words
// nothing.
#pragma once

#include <cstdint>

#include "fit/fit_result.h"

namespace tarnwick {

/// Why nothing found says little, the gravest first.
enum class TestGap {
  None,
  NoDerivatives,  ///< nothing could be tested
  TooFew,         ///< degrees of freedom
  PatternHinted,  ///< as chance has it now and then; more points would tell
  PointHinted,
  Hidden  ///< the scatter hides deviations beside which the curve is not worth much
};

/// With n degrees of freedom chance must lead to what was found in more than 0.003 (30 / n)^3 of all fits, 0.15 at most: a gross
/// deviation, twice the scatter, does so in less than one of a hundred. Five times as many where the residuals are those of
/// several DataSets. Where the scatter may hide nearly too much, 0.15 times the square of how nearly is the least for a pattern.
/// Known errors of the points make up for numbers.
TestGap FindTestGap(const FitResult& result);

/// The deviation of the model, relative to the spread of what it follows, that one test at a level of 0.001 finds in nine of ten
/// cases: sqrt((1 - R^2) / n) (t(0.9995) + t(0.9)), quantiles of Student's distribution with n - 1 degrees of freedom
/// (J. Cohen, Statistical Power Analysis, 1988, chapter 12). 0 for a constant, which has no spread.
double HiddenDeviation(const FitResult& result);

/// Degrees of freedom; of one DataSet among several, those that it would have alone.
std::int64_t OwnFreedom(const FitStatistics& statistics);

}  // namespace tarnwick
