#include "analysis/fit_run.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/undefined.h"
#include "expr/words/expr_rec.h"
#include "expr/words/expr_word.h"
#include "expr/words/parser_exception.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/fit_verdict.h"
#include "fit/judge/residual_pattern.h"
#include "fit/minimise/minimise_method.h"
#include "fit/minimise/newton_fit.h"
#include "fit/residuals/model_blocks.h"
#include "fit/residuals/model_residuals.h"

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

/// One run, on a model of its own.
class FitRun {
 public:
  FitRun(const FitJob& job, Progress& progress, const EveryStep& every_step);
  FitResult Run();

 private:
  std::optional<MinimiseOutcome> Refusal() const;
  void Minimise();
  NewtonOutcome NewtonFromValues(const MinimiseOptions& options, Progress& progress);
  bool LedAstray(const NewtonOutcome& newton) const;
  FittedPoints Points(std::int64_t undefined) const;
  void FinishByNewton();
  void ProbeByNewton();
  void Conclude();
  void MeasureStart();
  void MeasureEnd();
  double MeasurePattern();
  MinimiseOptions Options(std::int32_t iterations) const;
  bool ByNewton() const { return job_.settings.ProcType == FitProcType::cfp_Newton; }

  const FitJob& job_;
  Progress& progress_;
  const EveryStep& every_step_;
  TCurFit model_;
  std::unique_ptr<ModelResiduals> residuals_;
  FitResult result_;
  FitCircumstances about_;
  std::optional<ReducedJacobian> jacobian_;  // at the last values, when a method left it
};

FitRun::FitRun(const FitJob& job, Progress& progress, const EveryStep& every_step)
    : job_(job), progress_(progress), every_step_(every_step) {
  model_.SetSettings(job.settings, false);
  model_.Prepare();
  for (std::int32_t i = 1; i <= model_.NParams(); ++i) {
    if (!model_.Param(i).Vary()) continue;
    result_.names.push_back(model_.Param(i).Name());
    result_.start.push_back(model_.Param(i).Value());
  }
  result_.points_in_range = job.points_in_range;
  result_.points_used = job.points_chosen;
  result_.undefined_points = job.points_chosen - static_cast<std::int64_t>(job.x.size());
  about_.method = job.settings.ProcType;
  about_.max_iterations = job.settings.IterMax;
  about_.thinned_to = job.settings.NPoints;
  about_.extreme_data = FindExtreme(job);
  about_.sign_before_power = SignBeforeEvenPower(model_.CurrentRec());
  about_.regression_curve = job.source == FitPointSource::RegressionCurve;
}

/// What keeps the fit from beginning, before any point is looked at.
std::optional<MinimiseOutcome> FitRun::Refusal() const {
  if (result_.start.size() > static_cast<std::size_t>(kMaxVariedParameters))
    return Refused(StopReason::TooManyParameters, std::string(kTooManyParametersText));
  if (model_.CurrentRec() == nullptr)
    return Refused(StopReason::BadModel, "The model has no expression.");
  if (job_.x.empty()) return Refused(StopReason::NoPoints);
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
  const MinimiseMethod* const method = FindScalarMinimiseMethod(job_.settings.ProcType);
  if (method == nullptr) {
    NewtonOutcome newton = FitByNewton(*residuals_, result_.start, options, progress_);
    result_.outcome = std::move(newton.outcome);
    jacobian_ = std::move(newton.reduced);
    return;
  }
  const ScalarObjective objective = [this](std::span<const double> p) {
    return residuals_->SumOfSquares(p);
  };
  result_.outcome = method->minimise(objective, result_.start, options, progress_);
}

FittedPoints FitRun::Points(std::int64_t undefined) const {
  FittedPoints points;
  points.count = static_cast<std::int64_t>(job_.x.size()) - undefined;
  points.sum_about_mean = SumAboutMean(job_.y);
  if (!residuals_->HasExactDerivatives()) points.derivative_accuracy = kDifferenceAccuracy;
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
  NewtonOutcome here = FitByNewton(*residuals_, result_.outcome.p, options, progress);
  if (!result_.outcome.changed || progress.Cancelled() || !LedAstray(here)) return here;
  NewtonOutcome again = FitByNewton(*residuals_, result_.start, options, progress);
  const bool better = !Failed(again.outcome.why) &&
                      (Failed(here.outcome.why) || again.outcome.value < here.outcome.value);
  NewtonOutcome& chosen = better ? again : here;
  const NewtonOutcome& other = better ? here : again;
  chosen.outcome.iterations += other.outcome.iterations;
  chosen.outcome.evaluations += other.outcome.evaluations;
  chosen.outcome.changed = true;
  return std::move(chosen);
}

/// The outcome becomes that of both runs.
void FitRun::FinishByNewton() {
  MinimiseOptions options = Options(job_.settings.IterMax);
  options.every_step = every_step_;
  NewtonOutcome newton = NewtonFromValues(options, progress_);
  const MinimiseOutcome& first = result_.outcome;
  newton.outcome.start_value = first.start_value;
  newton.outcome.iterations += first.iterations;
  newton.outcome.evaluations += first.evaluations;
  newton.outcome.changed = newton.outcome.changed || first.changed;
  result_.outcome = std::move(newton.outcome);
  jacobian_ = std::move(newton.reduced);
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
  for (const double x : job_.x) {
    if (std::isfinite(model_.Value(x))) continue;
    if (about_.undefined_at_start++ == 0) about_.first_undefined_x = x;
  }
  // Only evaluating shows which names get their value by an assignment.
  for (const TGeneratedVariable& variable : model_.GeneratedVariables()) {
    if (IsUndefined(variable.Value())) about_.unknown_names.emplace_back(variable.Name());
  }
  for (std::int32_t i = 1; i <= model_.NParams(); ++i) {
    const TDBLParameter& parameter = model_.Param(i);
    if (!std::isfinite(parameter.Value())) about_.infinite_names.push_back(parameter.Name());
  }
}

/// Statistics at the values that now hold.
void FitRun::MeasureEnd() {
  ReducedJacobian none;
  none.r.resize(0, 0);
  if (result_.values.empty()) {
    none.sum_of_squares = residuals_->SumOfSquares({});
    result_.outcome.start_value = result_.outcome.value = none.sum_of_squares;
    jacobian_ = std::move(none);
  } else if (!jacobian_) {
    jacobian_ = residuals_->Reduce(result_.values, Reduction::Orthogonal);
  }
  FitFigures figures = ComputeFitFigures(*jacobian_, Points(jacobian_->undefined));
  result_.statistics = std::move(figures.statistics);
  result_.statistics.residual_correlation = MeasurePattern();
  result_.singular_directions = std::move(figures.singular_directions);
  result_.unmoved = std::move(figures.unmoved);
  result_.undefined_points += jacobian_->undefined;
}

/// Undefined where the residuals are but the rounding of Y.
double FitRun::MeasurePattern() {
  const std::vector<double> rest = residuals_->Residuals(result_.values, kPatternPoints);
  const double rounding = std::max(kRounding * Greatest(job_.y), kSmallest);
  return Greatest(rest) > rounding ? FindPattern(rest).neighbour_correlation : kUndefined;
}

/// What follows a run that did not fail: a finishing one, or a try whether that would pay, and the statistics.
void FitRun::Conclude() {
  const StopReason why = result_.outcome.why;
  const bool more = why != StopReason::Cancelled && why != StopReason::NothingVaried && !ByNewton();
  if (more && job_.options.finish == FinishingStep::Yes) FinishByNewton();
  result_.values = result_.outcome.p;
  MeasureEnd();
  if (more && job_.options.finish == FinishingStep::No) ProbeByNewton();
}

FitResult FitRun::Run() {
  result_.outcome.p = result_.values = result_.start;
  if (std::optional<MinimiseOutcome> refusal = Refusal()) {
    result_.outcome = *std::move(refusal);
  } else {
    try {
      residuals_ =
          std::make_unique<ModelResiduals>(model_, FitPoints{job_.x, job_.y}, job_.options.threads);
      if (result_.start.empty()) {
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
  }
  fit.SetResult(std::make_shared<const FitResult>(result));
  fit.Change(false);
}

}  // namespace tarnwick
