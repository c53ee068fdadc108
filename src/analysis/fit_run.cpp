#include "analysis/fit_run.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "analysis/fit_part.h"
#include "base/undefined.h"
#include "expr/words/expr_rec.h"
#include "expr/words/expr_word.h"
#include "expr/words/parser_exception.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/fit_verdict.h"
#include "fit/judge/residual_pattern.h"
#include "fit/judge/tied_parameters.h"
#include "fit/minimise/bounded_step.h"
#include "fit/minimise/minimise_method.h"
#include "fit/minimise/newton_fit.h"
#include "fit/model/ties.h"
#include "fit/residuals/model_blocks.h"

namespace tarnwick {
namespace {

using EveryStep = std::function<void(std::span<const double>)>;

/// A try whether more is to be had ends here at the latest.
constexpr std::int32_t kProbeIterations = 50;
/// Residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;
/// Squares of numbers beyond these, with what is multiplied to them, are no numbers any more.
constexpr double kGreatest = 1e153;
constexpr double kSmallest = 1e-140;
/// Central differences stand in for exact derivatives with this relative accuracy.
constexpr double kDifferenceAccuracy =
    8 * ModelBlocks::kDifferenceStep * ModelBlocks::kDifferenceStep;

MinimiseOutcome Refused(StopReason why, std::string message = {}) {
  MinimiseOutcome outcome;
  outcome.why = why;
  outcome.message = std::move(message);
  outcome.start_value = outcome.value = kUndefined;
  return outcome;
}

double Greatest(const std::vector<double>& values) {
  double greatest = 0;
  for (const double value : values) greatest = std::max(greatest, std::abs(value));
  return greatest;
}

/// Y or X whose squares, or those of what depends on them, are lost or overflow.
std::optional<ExtremeData> FindExtreme(const FitJob& job) {
  for (const ExtremeData& data :
       {ExtremeData{'Y', Greatest(job.y)}, ExtremeData{'X', Greatest(job.x)}}) {
    if (data.greatest > kGreatest || (data.greatest > 0 && data.greatest < kSmallest)) return data;
  }
  return std::nullopt;
}

const TExprRec* RecordOf(const TExprRec* first, const double* result) {
  for (const TExprRec* record = first; record != nullptr; record = record->Next) {
    if (&record->Res == result) return record;
  }
  return nullptr;
}

/// True for an even whole power of something with a minus before it.
bool SignBeforeEvenPower(const TExprRec* first) {
  for (const TExprRec* record = first; record != nullptr; record = record->Next) {
    if (record->Word == nullptr || record->Word->Name() != "^@") continue;
    const TExprRec* const base = RecordOf(first, record->Args[0]);
    if (base == nullptr || base->Word == nullptr || base->Word->Name() != "-@") continue;
    if (record->Args[1] != nullptr && std::fmod(*record->Args[1], 2) == 0) return true;
  }
  return false;
}

/// Weights that follow the values are made anew so often at most.
constexpr int kMostRounds = 60;
/// They have settled when a round moves the parameters by less than this part of their errors; methods that stop by the sum of
/// squares get no nearer than the second.
constexpr double kSettled = 1e-7;
constexpr double kSettledByLines = 1e-3;

/// One run, on a model of its own.
class FitRun {
 public:
  FitRun(const FitJob& job, Progress& progress, const EveryStep& every_step);
  FitResult Run();

 private:
  /// How a fit goes on from values found; `reduced` is empty where the method leaves none.
  using Again = std::function<NewtonOutcome(std::span<const double>, const MinimiseOptions&)>;

  std::optional<MinimiseOutcome> Refusal() const;
  void Minimise();
  NewtonOutcome ByMethod(std::span<const double> start, const MinimiseOptions& options);
  void SettleWeights(const Again& again, double near);
  bool SettleRound(const Again& again, double near);
  double Moved(std::span<const double> from, NewtonOutcome& to);
  void GoOnWith(NewtonOutcome next);
  NewtonOutcome NewtonFromValues(const MinimiseOptions& options, Progress& progress);
  bool LedAstray(const NewtonOutcome& newton) const;
  FittedPoints Points(std::int64_t undefined) const;
  void FinishByNewton();
  void ProbeByNewton();
  void Conclude();
  void MeasureStart();
  void MeasureEnd();
  FittedPoints PointsAtEnd();
  double MeasurePattern();
  MinimiseOptions Options(std::int32_t iterations) const;
  bool ByNewton() const { return job_.settings.ProcType == FitProcType::cfp_Newton; }
  ModelResiduals& Residuals() { return *part_.residuals; }

  const FitJob& job_;
  Progress& progress_;
  const EveryStep& every_step_;
  FitPart part_;
  FitResult result_;
  FitCircumstances about_;
  std::optional<ReducedJacobian> jacobian_;  // at the last values, when a method left it
};

FitRun::FitRun(const FitJob& job, Progress& progress, const EveryStep& every_step)
    : job_(job), progress_(progress), every_step_(every_step), part_(job) {
  const TCurFit& model = part_.model;
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    if (!model.Param(i).Vary()) continue;
    part_.columns.push_back(result_.names.size());
    result_.names.push_back(model.Param(i).Name());
    result_.start.push_back(model.Param(i).Value());
  }
  result_.points_in_range = job.points_in_range;
  result_.points_used = job.points_chosen;
  result_.points_without_error = job.points_without_error;
  result_.undefined_points = job.points_chosen - job.points_without_error -
                             static_cast<std::int64_t>(job.x.size());
  result_.statistics.weighting = part_.weighting;
  about_.method = job.settings.ProcType;
  about_.max_iterations = job.settings.IterMax;
  about_.thinned_to = job.settings.NPoints;
  about_.extreme_data = FindExtreme(job);
  about_.sign_before_power = SignBeforeEvenPower(model.CurrentRec());
  about_.regression_curve = job.source == FitPointSource::RegressionCurve;
  about_.weighted_unasked = job.settings.weighting.weights == FitWeights::Automatic &&
                            part_.weighting.weights == FitWeights::Errors;
}

/// What keeps the fit from beginning, before any point is looked at.
std::optional<MinimiseOutcome> FitRun::Refusal() const {
  if (result_.start.size() > static_cast<std::size_t>(kMaxVariedParameters))
    return Refused(StopReason::TooManyParameters, std::string(kTooManyParametersText));
  if (std::string trouble = LimitTrouble(job_.settings.parameters); !trouble.empty())
    return Refused(StopReason::BadModel, "Nothing was fitted: " + trouble);
  if (part_.model.CurrentRec() == nullptr)
    return Refused(StopReason::BadModel, "The model has no expression.");
  if (job_.x.empty()) return Refused(StopReason::NoPoints);
  if (part_.weighting.weights == FitWeights::Errors && job_.errors.empty())
    return Refused(StopReason::BadModel,
                   "Nothing was fitted: the points have no errors of Y to weigh them by.");
  if (part_.weighting.errors == FitErrors::Absolute && part_.weighting.loss != FitLoss::Linear)
    return Refused(StopReason::BadModel,
                   "Nothing was fitted: absolute errors need the linear loss, a robust one tells "
                   "errors by the residuals.");
  return std::nullopt;
}

MinimiseOptions FitRun::Options(std::int32_t iterations) const {
  MinimiseOptions options;
  options.tolerance = job_.settings.Tolerance;
  options.max_iterations = iterations;
  return options;
}

/// The one place that knows which method is run how.
void FitRun::Minimise() {
  MinimiseOptions options = Options(job_.settings.IterMax);
  options.every_step = every_step_;
  if (ByNewton()) {
    NewtonOutcome newton = FitByNewton(Residuals(), result_.start, options, progress_);
    result_.outcome = std::move(newton.outcome);
    jacobian_ = std::move(newton.reduced);
  } else {
    result_.outcome = ByMethod(result_.start, options).outcome;
  }
  SettleWeights([this](std::span<const double> from,
                       const MinimiseOptions& rest) { return ByMethod(from, rest); },
                ByNewton() ? kSettled : kSettledByLines);
}

NewtonOutcome FitRun::ByMethod(std::span<const double> start, const MinimiseOptions& options) {
  const MinimiseMethod* const method = FindScalarMinimiseMethod(job_.settings.ProcType);
  if (method == nullptr) return MinimiseNewton(Residuals(), start, options, progress_);
  const ScalarObjective objective = [this](std::span<const double> p) {
    return Residuals().SumOfSquares(p);
  };
  const Box box(Residuals().Ranges());
  if (!box.Bounds()) return {method->minimise(objective, start, options, progress_), {}};
  NewtonOutcome outcome{
      method->minimise(ContinuedBeyond(objective, box, objective(start)), start, options, progress_),
      {}};
  if (!Failed(outcome.outcome.why)) PutIntoBox(objective, box, outcome.outcome);
  return outcome;
}

/// Iteratively reweighted least squares: weights by the values found, values by the weights, until both agree.
void FitRun::SettleWeights(const Again& again, double near) {
  if (!IsIterated(part_.weighting)) return;
  for (int round = 0; round < kMostRounds; ++round) {
    const StopReason why = result_.outcome.why;
    if (Failed(why) || why == StopReason::Cancelled || why == StopReason::IterationLimit) return;
    if (SettleRound(again, near)) return;
  }
  result_.outcome.why = StopReason::IterationLimit;
  result_.outcome.stop_test = "the weights did not settle";
}

/// True when that was the last.
bool FitRun::SettleRound(const Again& again, double near) {
  MinimiseOptions options = Options(job_.settings.IterMax - result_.outcome.iterations);
  options.every_step = every_step_;
  if (options.max_iterations <= 0) {
    result_.outcome.why = StopReason::IterationLimit;
    result_.outcome.stop_test = "the greatest number of iterations was reached";
    return true;
  }
  const std::vector<double> from = result_.outcome.p;
  part_.Reweigh(part_.Local(from));
  NewtonOutcome next = again(from, options);
  if (Failed(next.outcome.why)) {
    next.outcome.p = from;
    next.outcome.why = StopReason::NoFurtherDescent;
  }
  const double moved = Moved(from, next);
  const double free_points = static_cast<double>(job_.x.size()) - static_cast<double>(from.size());
  const double deviation = std::sqrt(next.outcome.value / std::max(free_points, 1.0));
  GoOnWith(std::move(next));
  return !(moved > near * deviation + kRounding * Residuals().NormOfY());
}

/// How far apart the values are, in the length of the residuals that they change.
double FitRun::Moved(std::span<const double> from, NewtonOutcome& to) {
  const std::vector<double>& p = to.outcome.p;
  if (std::ranges::equal(from, p)) return 0;
  const ReducedJacobian reduced =
      to.reduced.r.size() > 0 ? to.reduced : Residuals().Reduce(p, Reduction::NormalEquations);
  Eigen::VectorXd step(static_cast<Eigen::Index>(p.size()));
  for (std::size_t i = 0; i < p.size(); ++i) step[static_cast<Eigen::Index>(i)] = p[i] - from[i];
  return (reduced.r * step).norm();
}

/// The outcome becomes that of all runs so far.
void FitRun::GoOnWith(NewtonOutcome next) {
  MinimiseOutcome& sum = result_.outcome;
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

FittedPoints FitRun::Points(std::int64_t undefined) const {
  FittedPoints points;
  points.count = static_cast<std::int64_t>(job_.x.size()) - undefined;
  points.sum_about_mean = part_.residuals->SumAboutMean();
  if (!part_.residuals->HasExactDerivatives()) points.derivative_accuracy = kDifferenceAccuracy;
  points.weighting = part_.weighting;
  return points;
}

/// True where the data do not hold the parameters, or a constant would do better: no place to trust.
bool FitRun::LedAstray(const NewtonOutcome& newton) const {
  if (Failed(newton.outcome.why)) return true;
  const FitFigures figures = ComputeFitFigures(newton.reduced, Points(newton.reduced.undefined));
  return !figures.singular_directions.empty() || !figures.unmoved.empty() ||
         NoBetterThanMean(figures.statistics);
}

/// Goes on from the values found, and where that leads nowhere, because the method before went astray, from the start;
/// the better of both.
NewtonOutcome FitRun::NewtonFromValues(const MinimiseOptions& options, Progress& progress) {
  NewtonOutcome here = FitByNewton(Residuals(), result_.outcome.p, options, progress);
  if (!result_.outcome.changed || progress.Cancelled() || !LedAstray(here)) return here;
  NewtonOutcome again = FitByNewton(Residuals(), result_.start, options, progress);
  const bool better = !Failed(again.outcome.why) &&
                      (Failed(here.outcome.why) || again.outcome.value < here.outcome.value);
  NewtonOutcome& chosen = better ? again : here;
  const NewtonOutcome& other = better ? here : again;
  chosen.outcome.iterations += other.outcome.iterations;
  chosen.outcome.evaluations += other.outcome.evaluations;
  chosen.outcome.changed = true;
  return std::move(chosen);
}

/// The outcome becomes that of all runs.
void FitRun::FinishByNewton() {
  MinimiseOptions options = Options(job_.settings.IterMax);
  options.every_step = every_step_;
  GoOnWith(NewtonFromValues(options, progress_));
  const Again by_newton = [this](std::span<const double> from, const MinimiseOptions& rest) {
    return MinimiseNewton(Residuals(), from, rest, progress_);
  };
  SettleWeights(by_newton, kSettled);
}

/// What FinishByNewton would reach; nothing is kept but its sum of squares.
void FitRun::ProbeByNewton() {
  QuietProgress quiet(progress_, result_.outcome.iterations);
  const NewtonOutcome newton = NewtonFromValues(Options(kProbeIterations), quiet);
  if (newton.outcome.why != StopReason::Cancelled && !Failed(newton.outcome.why))
    result_.newton_sum_of_squares = std::min(newton.outcome.value, result_.outcome.value);
}

/// Where the model has no value at the start, for the verdict.
void FitRun::MeasureStart() {
  TCurFit& model = part_.model;
  for (const double x : job_.x) {
    if (std::isfinite(model.Value(x))) continue;
    if (about_.undefined_at_start++ == 0) about_.first_undefined_x = x;
  }
  // Only evaluating shows which names get their value by an assignment.
  for (const TGeneratedVariable& variable : model.GeneratedVariables()) {
    if (IsUndefined(variable.Value())) about_.unknown_names.emplace_back(variable.Name());
  }
  for (std::int32_t i = 1; i <= model.NParams(); ++i) {
    const TDBLParameter& parameter = model.Param(i);
    if (!std::isfinite(parameter.Value())) about_.infinite_names.push_back(parameter.Name());
  }
}

/// Statistics at the values that now hold.
void FitRun::MeasureEnd() {
  ReducedJacobian none;
  none.r.resize(0, 0);
  if (result_.values.empty()) {
    none.sum_of_squares = Residuals().SumOfSquares({});
    result_.outcome.start_value = result_.outcome.value = none.sum_of_squares;
    jacobian_ = std::move(none);
  } else if (!jacobian_) {
    jacobian_ = Residuals().Reduce(result_.values, Reduction::Orthogonal);
  }
  const FittedPoints points = PointsAtEnd();
  const std::vector<bool> held = Box(Residuals().Ranges()).OnBounds(result_.values);
  FitFigures figures = ComputeFitFigures(Holding(*jacobian_, held), points);
  result_.statistics = std::move(figures.statistics);
  result_.statistics.weighting.loss_scale = part_.weights->LossScale();
  result_.points_without_weight = part_.weights->WithoutWeight();
  result_.statistics.residual_correlation = MeasurePattern();
  result_.singular_directions = std::move(figures.singular_directions);
  for (std::size_t i = 0; i < held.size(); ++i) {
    if (held[i]) result_.at_bound.push_back(static_cast<std::int32_t>(i));
  }
  std::ranges::set_difference(figures.unmoved, result_.at_bound,
                              std::back_inserter(result_.unmoved));
  const bool told = result_.singular_directions.empty() && result_.unmoved.empty();
  result_.tied = TiedParameters(job_.settings, result_.values, result_.statistics);
  for (TiedParameter& one : result_.tied) one.error = told ? one.error : kUndefined;
  result_.undefined_points += jacobian_->undefined;
}

/// With what the statistics need where points do not all weigh alike. Under a loss the Jacobian becomes that of all points in
/// full: the loss is in the variance.
FittedPoints FitRun::PointsAtEnd() {
  FittedPoints points = Points(jacobian_->undefined);
  const std::vector<double> local = part_.Local(result_.values);
  points.mean_variance = part_.MeanVariance();
  points.likelihood_term = part_.LikelihoodTerm(local);
  if (part_.weighting.loss == FitLoss::Linear) return points;
  const double sum_of_squares = jacobian_->sum_of_squares;
  const std::vector<double> rest = part_.ResidualsWithoutLoss(local);
  points.robust_variance =
      RobustVariance(part_.weighting.loss, part_.weights->LossScale(), rest, local.size());
  points.robust_measurement =
      part_.weights->RobustDeviation() * part_.weights->RobustDeviation();
  if (local.empty()) return points;
  part_.Weigh(FitPart::Loss::Without);
  jacobian_ = Residuals().Reduce(result_.values, Reduction::Orthogonal);
  part_.Weigh(FitPart::Loss::With);
  jacobian_->sum_of_squares = sum_of_squares;
  return points;
}

/// Undefined where the residuals are but the rounding of Y.
double FitRun::MeasurePattern() {
  const std::vector<double> rest = Residuals().Residuals(result_.values, kPatternPoints);
  const double rounding = std::max(kRounding * part_.GreatestY(), kSmallest);
  return Greatest(rest) > rounding ? FindPattern(rest).neighbour_correlation : kUndefined;
}

/// What follows a run that did not fail: a finishing one, or a try whether that would pay, and the statistics.
void FitRun::Conclude() {
  const StopReason why = result_.outcome.why;
  const bool more = why != StopReason::Cancelled && why != StopReason::NothingVaried && !ByNewton();
  if (more && job_.options.finish == FinishingStep::Yes) FinishByNewton();
  result_.values = result_.outcome.p;
  if (IsIterated(part_.weighting))
    result_.outcome.start_value = Residuals().SumOfSquares(result_.start);
  MeasureEnd();
  if (more && job_.options.finish == FinishingStep::No) ProbeByNewton();
}

FitResult FitRun::Run() {
  result_.outcome.p = result_.values = result_.start;
  if (std::optional<MinimiseOutcome> refusal = Refusal()) {
    result_.outcome = *std::move(refusal);
  } else {
    try {
      part_.Begin();
      if (result_.start.empty()) {
        for (int i = 0; i < kMostRounds && IsIterated(part_.weighting); ++i) part_.Reweigh({});
        MeasureStart();
        if (!about_.unknown_names.empty()) result_.outcome = Refused(StopReason::UndefinedAtStart);
      } else {
        Minimise();
        if (Failed(result_.outcome.why)) MeasureStart();
      }
      if (!Failed(result_.outcome.why)) Conclude();
    } catch (const EIntegerDivision& error) {
      result_.outcome = Refused(StopReason::BadModel, error.what());
    }
  }
  if (Failed(result_.outcome.why)) result_.outcome.p = result_.values = result_.start;
  result_.verdict = JudgeFit(result_, about_);
  return std::move(result_);
}

}  // namespace

FitResult RunFit(const FitJob& job, Progress& progress, const EveryStep& every_step) {
  progress.Begin("Fitting Data....", "", job.settings.IterMax);
  return FitRun(job, progress, every_step).Run();
}

void ApplyFit(TDataSeries& series, const FitResult& result) {
  TCurFit& fit = series.Fit();
  std::vector<std::int32_t> varied;
  for (std::int32_t i = 1; i <= fit.NParams(); ++i) {
    if (fit.Param(i).Vary()) varied.push_back(i);
  }
  if (!Failed(result.outcome.why) && varied.size() == result.values.size()) {
    for (std::size_t i = 0; i < varied.size(); ++i) fit.Param(varied[i]).SetValue(result.values[i]);
    fit.UpdateTies();
  }
  fit.SetResult(std::make_shared<const FitResult>(result));
  fit.Change(false);
}

}  // namespace tarnwick
