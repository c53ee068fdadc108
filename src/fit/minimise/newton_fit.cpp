#include "fit/minimise/newton_fit.h"

#include <Eigen/Core>
#include <algorithm>
#include <cmath>

#include "fit/judge/fit_statistics.h"
#include "fit/judge/residual_pattern.h"
#include "fit/minimise/wide_search.h"
#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

/// Residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;
/// A run that ends where a full step promises more than this part of the residuals ends on a plateau.
constexpr double kPlateauOffset = 1e-4;
/// A smallest singular value below this, to the greatest, is no place where a fit should end.
constexpr double kNearlySingular = 1e-8;
/// An error of this part of its value, which other parameters make up for, speaks of a minimum far off.
constexpr double kLostToOthers = 1;
/// A run that has not settled after so many iterations, or half of those allowed, may have lost its way.
constexpr std::int32_t kLeastStretch = 50;

/// True where the columns of R, each scaled to length 1, are nearly dependent: some parameters can run away together.
bool IsNearlySingular(const ReducedJacobian& reduced) {
  const Eigen::VectorXd lengths = reduced.r.colwise().norm().transpose();
  if (lengths.size() == 0 || !reduced.r.allFinite()) return false;
  if (lengths.minCoeff() == 0) return true;
  const Eigen::MatrixXd scaled = reduced.r * lengths.cwiseInverse().asDiagonal();
  if (IsFarFromSingular(scaled, kNearlySingular)) return false;
  const Eigen::VectorXd singular = SingularValuesOf(scaled);
  return singular[singular.size() - 1] < kNearlySingular * singular[0];
}

bool Settled(const MinimiseOutcome& outcome) {
  return outcome.why == StopReason::Converged || outcome.why == StopReason::NoFurtherDescent;
}

bool OnPlateau(const NewtonOutcome& newton, double norm_of_y) {
  const double offset = newton.reduced.qtr.norm();
  return offset > kPlateauOffset * std::sqrt(newton.outcome.value) &&
         offset > kPlateauOffset * norm_of_y;
}

/// Something speaks for a lower minimum elsewhere: the parameters ran away together or lie on a plateau, the run is lost, or
/// the residuals do not look like errors of measurement.
bool LooksImprovable(const NewtonOutcome& newton, LeastSquaresProblem& residuals) {
  if (!Settled(newton.outcome)) return newton.outcome.why == StopReason::IterationLimit;
  if (OnPlateau(newton, residuals.NormOfY()) || IsNearlySingular(newton.reduced)) return true;
  if (std::sqrt(newton.outcome.value) <= kRounding * residuals.NormOfY()) return false;
  FittedPoints points;
  points.count = static_cast<std::int64_t>(residuals.PointCount());
  points.sum_about_mean = residuals.SumAboutMean();
  const FitFigures figures = ComputeFitFigures(newton.reduced, points);
  return NoBetterThanMean(figures.statistics) ||
         !HardlyDetermined(figures.statistics, newton.outcome.p, kLostToOthers).empty() ||
         IsSuspicious(FindPattern(residuals.Residuals(newton.outcome.p, kPatternPoints)));
}

}  // namespace

NewtonOutcome FitByNewton(LeastSquaresProblem& residuals, std::span<const double> start,
                          const MinimiseOptions& options, Progress& progress) {
  NewtonMinimiser run(residuals, start, options, progress);
  run.RunTo(std::max(options.max_iterations / 2, kLeastStretch));
  NewtonOutcome first = run.Outcome();
  const std::int32_t left = options.max_iterations - first.outcome.iterations;
  if (left <= 0 || !LooksImprovable(first, residuals)) return first;

  QuietProgress quiet(progress, first.outcome.iterations);
  const WideSearchResult found = SearchWidely(residuals, start, first.outcome.p, quiet);
  std::int64_t in_vain = found.evaluations;
  if (found.p && !progress.Cancelled()) {
    MinimiseOptions rest = options;
    rest.max_iterations = left;
    NewtonOutcome second = MinimiseNewton(residuals, *found.p, rest, quiet);
    if (!Failed(second.outcome.why) && second.outcome.value < first.outcome.value) {
      second.outcome.start_value = first.outcome.start_value;
      second.outcome.left_minimum = {first.outcome.value, second.outcome.value};
      second.outcome.iterations += first.outcome.iterations;
      second.outcome.evaluations += first.outcome.evaluations + found.evaluations;
      second.outcome.changed = !std::ranges::equal(start, second.outcome.p);
      return second;
    }
    in_vain += second.outcome.evaluations;
  }
  run.RunTo(options.max_iterations);
  first = run.Outcome();
  first.outcome.search_evaluations = in_vain;
  if (progress.Cancelled()) {
    first.outcome.why = StopReason::Cancelled;
    first.outcome.stop_test = "cancelled";
  }
  return first;
}

}  // namespace tarnwick
