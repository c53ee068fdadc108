#include "fit/judge/test_power.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/undefined.h"
#include "fit/judge/distributions.h"
#include "fit/judge/residual_tests.h"

namespace tarnwick {
namespace {

/// Of residuals that are but rounding: an exact agreement of so many points is none by chance.
constexpr std::int64_t kFewestExact = 3;
constexpr std::int64_t kFewestTested = 4;
constexpr double kHintLevel = 0.003;
constexpr double kHintFreedom = 30;
constexpr double kMostHintLevel = 0.15;
/// What each of several DataSets shows a little of, its tests see less clearly one behind the other.
constexpr double kHintOfSeveral = 5;
/// Two-sided levels of what one test finds, and how surely.
constexpr double kFound = 0.999;
constexpr double kSurely = 0.8;
constexpr double kMostHidden = 1.0 / 3;
/// An R^2 below is that of a constant, which has no spread to measure by.
constexpr double kNoSpread = 1e-9;

double HintLevel(const ResidualFindings& found) {
  const double level = kHintLevel * std::pow(kHintFreedom / static_cast<double>(found.freedom), 3);
  return std::min(kMostHintLevel, found.of_several ? kHintOfSeveral * level : level);
}

/// The nearer to what would be too much the deviation is that the scatter may hide, the less is a pattern to be taken for
/// chance that chance makes now and then: half as great a deviation seldom leads farther. At most kMostHidden.
double HintLevelOfHidden(double hidden) {
  return kMostHintLevel * std::pow(hidden / kMostHidden, 2);
}

}  // namespace

double HiddenDeviation(const FitResult& result) {
  const double r_squared = result.statistics.r_squared;
  const std::int64_t freedom = result.residuals.freedom;
  if (!(r_squared > kNoSpread)) return 0;
  const double deviations =
      StudentQuantile(freedom - 1, kFound) + StudentQuantile(freedom - 1, kSurely);
  return std::sqrt((1 - r_squared) / static_cast<double>(freedom)) * deviations;
}

std::int64_t OwnFreedom(const FitStatistics& statistics) {
  return std::max<std::int64_t>(
      std::min(statistics.degrees_of_freedom, statistics.points - statistics.varied), 0);
}

TestGap FindTestGap(const FitResult& result) {
  const ResidualFindings& found = result.residuals;
  if (result.statistics.weighting.errors == FitErrors::Absolute)
    return result.statistics.degrees_of_freedom > 0 ? TestGap::None : TestGap::TooFew;
  const std::int64_t freedom = OwnFreedom(result.statistics);
  if (IsUndefined(result.statistics.residual_correlation))
    return freedom < kFewestExact ? TestGap::TooFew : TestGap::None;
  if (freedom < kFewestTested) return TestGap::TooFew;
  if (found.freedom < kFewestTested) return TestGap::NoDerivatives;
  const double level = HintLevel(found);
  const double hidden = HiddenDeviation(result);
  if (HintsAtPattern(found, level)) return TestGap::PatternHinted;
  if (HintsAtPoint(found, level)) return TestGap::PointHinted;
  if (hidden > kMostHidden) return TestGap::Hidden;
  return HintsAtPattern(found, HintLevelOfHidden(hidden)) ? TestGap::PatternHinted : TestGap::None;
}

}  // namespace tarnwick
