#include "analysis/fits/fit_minimisation.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fit/minimise/bounded_step.h"
#include "fit/minimise/minimise_method.h"
#include "fit/minimise/newton_fit.h"
#include "fit/residuals/model_blocks.h"

namespace tarnwick {
namespace {

/// A try whether more is to be had ends here at the latest.
constexpr std::int32_t kProbeIterations = 50;
/// Changes of residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;
/// Central differences stand in for exact derivatives with this relative accuracy.
constexpr double kDifferenceAccuracy =
    8 * ModelBlocks::kDifferenceStep * ModelBlocks::kDifferenceStep;
/// Weights have settled when a round moves the parameters by less than this part of their errors; methods that stop by the sum of
/// squares get no nearer than the second.
constexpr double kSettled = 1e-7;
constexpr double kSettledByLines = 1e-3;

}  // namespace

FittedPoints PointsOf(const LeastSquaresProblem& problem, const FitWeighting& weighting,
                      std::int64_t undefined) {
  FittedPoints points;
  points.count = static_cast<std::int64_t>(problem.PointCount()) - undefined;
  points.sum_about_mean = problem.SumAboutMean();
  if (!problem.HasExactDerivatives()) points.derivative_accuracy = kDifferenceAccuracy;
  points.weighting = weighting;
  return points;
}

FitMinimisation::FitMinimisation(const Parts& parts, LeastSquaresProblem& problem,
                                 std::vector<double> start, Progress& progress,
                                 const EveryStep& every_step)
    : parts_(parts),
      problem_(problem),
      start_(std::move(start)),
      progress_(progress),
      every_step_(every_step) {}

MinimiseOptions FitMinimisation::Options(std::int32_t iterations) const {
  MinimiseOptions options;
  options.tolerance = Settings().Tolerance;
  options.max_iterations = iterations;
  return options;
}

/// The one place that knows which method is run how.
void FitMinimisation::Run() {
  MinimiseOptions options = Options(Settings().IterMax);
  options.every_step = every_step_;
  if (ByNewton()) {
    NewtonOutcome newton = FitByNewton(problem_, start_, options, progress_);
    outcome_ = std::move(newton.outcome);
    jacobian_ = std::move(newton.reduced);
  } else {
    outcome_ = ByMethod(start_, options).outcome;
  }
  SettleWeights([this](std::span<const double> from,
                       const MinimiseOptions& rest) { return ByMethod(from, rest); },
                ByNewton() ? kSettled : kSettledByLines);
}

NewtonOutcome FitMinimisation::ByMethod(std::span<const double> start,
                                        const MinimiseOptions& options) {
  const MinimiseMethod* const method = FindScalarMinimiseMethod(Settings().ProcType);
  if (method == nullptr) return MinimiseNewton(problem_, start, options, progress_);
  const ScalarObjective objective = [this](std::span<const double> p) {
    return problem_.SumOfSquares(p);
  };
  const Box box(problem_.Ranges());
  if (!box.Bounds()) return {method->minimise(objective, start, options, progress_), {}};
  NewtonOutcome outcome{method->minimise(ContinuedBeyond(objective, box, objective(start)), start,
                                         options, progress_),
                        {}};
  if (!Failed(outcome.outcome.why)) PutIntoBox(objective, box, outcome.outcome);
  return outcome;
}

/// Iteratively reweighted least squares: weights by the values found, values by the weights, until both agree.
void FitMinimisation::SettleWeights(const Again& again, double near) {
  if (!IsIterated(Weighting())) return;
  for (int round = 0; round < kMostWeightRounds; ++round) {
    const StopReason why = outcome_.why;
    if (Failed(why) || why == StopReason::Cancelled || why == StopReason::IterationLimit) return;
    if (SettleRound(again, near)) return;
  }
  outcome_.why = StopReason::IterationLimit;
  outcome_.stop_test = "the weights did not settle";
}

/// True when that was the last.
bool FitMinimisation::SettleRound(const Again& again, double near) {
  MinimiseOptions options = Options(Settings().IterMax - outcome_.iterations);
  options.every_step = every_step_;
  if (options.max_iterations <= 0) {
    outcome_.why = StopReason::IterationLimit;
    outcome_.stop_test = "the greatest number of iterations was reached";
    return true;
  }
  const std::vector<double> from = outcome_.p;
  for (const auto& part : parts_) part->Reweigh(part->Local(from));
  ++outcome_.evaluations;  // the model's values tell the weights
  NewtonOutcome next = again(from, options);
  if (Failed(next.outcome.why)) {
    next.outcome.p = from;
    next.outcome.why = StopReason::NoFurtherDescent;
  }
  const double moved = Moved(from, next);
  const double free_points =
      static_cast<double>(problem_.PointCount()) - static_cast<double>(from.size());
  const double deviation = std::sqrt(next.outcome.value / std::max(free_points, 1.0));
  GoOnWith(std::move(next));
  return !(moved > near * deviation + kRounding * problem_.NormOfY());
}

/// How far apart the values are, in the length of the residuals that they change.
double FitMinimisation::Moved(std::span<const double> from, NewtonOutcome& to) {
  const std::vector<double>& p = to.outcome.p;
  if (std::ranges::equal(from, p)) return 0;
  const ReducedJacobian reduced =
      to.reduced.r.size() > 0 ? to.reduced : problem_.Reduce(p, Reduction::NormalEquations);
  Eigen::VectorXd step(static_cast<Eigen::Index>(p.size()));
  for (std::size_t i = 0; i < p.size(); ++i) step[static_cast<Eigen::Index>(i)] = p[i] - from[i];
  return (reduced.r * step).norm();
}

/// The outcome becomes that of all runs so far.
void FitMinimisation::GoOnWith(NewtonOutcome next) {
  MinimiseOutcome& sum = outcome_;
  next.outcome.start_value = sum.start_value;
  next.outcome.iterations += sum.iterations;
  next.outcome.evaluations += sum.evaluations;
  if (!next.outcome.left_minimum) next.outcome.left_minimum = sum.left_minimum;
  next.outcome.search_evaluations += sum.search_evaluations;
  // A run that finds the values as good as they were says nothing of how they were found.
  if (next.outcome.why == StopReason::NoFurtherDescent && next.outcome.p == sum.p) {
    next.outcome.why = sum.why;
    next.outcome.stop_test = sum.stop_test;
  }
  next.outcome.changed = next.outcome.changed || sum.changed;
  sum = std::move(next.outcome);
  jacobian_.reset();
  if (next.reduced.r.size() > 0) jacobian_ = std::move(next.reduced);
}

/// True where the data do not hold the parameters, or a constant would do better: no place to trust.
bool FitMinimisation::LedAstray(const NewtonOutcome& newton) const {
  if (Failed(newton.outcome.why)) return true;
  const FitFigures figures =
      ComputeFitFigures(newton.reduced, PointsOf(problem_, Weighting(), newton.reduced.undefined));
  return !figures.singular_directions.empty() || !figures.unmoved.empty() ||
         NoBetterThanMean(figures.statistics);
}

/// Goes on from the values found, and where that leads nowhere, because the method before went astray, from the start;
/// the better of both.
NewtonOutcome FitMinimisation::NewtonFromValues(const MinimiseOptions& options,
                                                Progress& progress) {
  NewtonOutcome here = FitByNewton(problem_, outcome_.p, options, progress);
  if (!outcome_.changed || progress.Cancelled() || !LedAstray(here)) return here;
  NewtonOutcome again = FitByNewton(problem_, start_, options, progress);
  const bool better = !Failed(again.outcome.why) &&
                      (Failed(here.outcome.why) || again.outcome.value < here.outcome.value);
  NewtonOutcome& chosen = better ? again : here;
  const NewtonOutcome& other = better ? here : again;
  chosen.outcome.iterations += other.outcome.iterations;
  chosen.outcome.evaluations += other.outcome.evaluations;
  chosen.outcome.changed = true;
  return std::move(chosen);
}

void FitMinimisation::Finish() {
  MinimiseOptions options = Options(Settings().IterMax);
  options.every_step = every_step_;
  GoOnWith(NewtonFromValues(options, progress_));
  const Again by_newton = [this](std::span<const double> from, const MinimiseOptions& rest) {
    return MinimiseNewton(problem_, from, rest, progress_);
  };
  SettleWeights(by_newton, kSettled);
}

std::optional<double> FitMinimisation::Probe() {
  QuietProgress quiet(progress_, outcome_.iterations);
  const NewtonOutcome newton = NewtonFromValues(Options(kProbeIterations), quiet);
  if (newton.outcome.why == StopReason::Cancelled || Failed(newton.outcome.why))
    return std::nullopt;
  return std::min(newton.outcome.value, outcome_.value);
}

}  // namespace tarnwick
