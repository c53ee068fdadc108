#include "fit/judge/fit_findings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "fit/judge/curve_swing.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/residual_tests.h"

namespace tarnwick {
namespace {

// Nearer to the best fit than this many standard errors, a difference means nothing.
constexpr double kNearEnough = 0.1;
// A gain in the sum of squares below this share is the rounding of its last digits.
constexpr double kGainWorthNaming = 1e-9;
// A chi squared that chance leads to more rarely speaks against the model or its errors.
constexpr double kRareChance = 0.001;

}  // namespace

bool Ran(const FitResult& result) {
  switch (result.outcome.why) {
    case StopReason::Converged:
    case StopReason::NoFurtherDescent:
    case StopReason::IterationLimit:
    case StopReason::Cancelled:
      return true;
    default:
      return false;
  }
}

bool Settled(const FitResult& result) {
  return result.outcome.why == StopReason::Converged ||
         result.outcome.why == StopReason::NoFurtherDescent;
}

double DistanceToBestFit(const FitResult& result) {
  if (!result.newton_sum_of_squares) return 0;
  const double best = *result.newton_sum_of_squares;
  const double gain = result.outcome.value - best;
  if (!(gain > kGainWorthNaming * result.outcome.value)) return 0;
  const double variance =
      best / static_cast<double>(std::max<std::int64_t>(result.statistics.degrees_of_freedom, 1));
  return variance > 0 ? std::sqrt(gain / variance) : std::numeric_limits<double>::infinity();
}

bool HasConverged(const FitResult& result) {
  return Settled(result) && DistanceToBestFit(result) <= kNearEnough;
}

bool TooFewPoints(const FitResult& result) {
  return result.statistics.points < result.statistics.varied;
}

bool NoBetterThanMean(const FitResult& result) {
  return NoBetterThanMean(result.statistics);
}

bool ErrorsTooSmall(const FitResult& result) {
  return result.statistics.chi_squared_probability < kRareChance;
}

bool ErrorsTooGreat(const FitResult& result) {
  return result.statistics.chi_squared_probability > 1 - kRareChance;
}

bool PointsLost(const FitResult& result) {
  return result.undefined_points + result.points_without_error + result.points_without_weight > 0;
}

bool AllDetermined(const FitResult& result) {
  return result.singular_directions.empty() && result.unmoved.empty() && result.open.empty() &&
         result.limits.empty() && result.traded.empty() && result.at_bound.empty() &&
         result.absent.empty();
}

bool ModelHolds(const FitResult& result) {
  return !NoBetterThanMean(result) && !FollowsShape(result.residuals) &&
         !Alternates(result.residuals) && !OnePointBends(result.residuals) &&
         !ScattersUnequally(result.residuals) && !SwingsFreely(result.swing) &&
         !OutrunsPoints(result.swing) && !ErrorsTooSmall(result);
}

}  // namespace tarnwick
