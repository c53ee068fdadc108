#include "analysis/fit_run.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

#include "analysis/fit_circumstances.h"
#include "analysis/fit_part.h"
#include "analysis/fit_share.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "expr/words/evaluation_procedures.h"
#include "expr/words/expr_rec.h"
#include "expr/words/parser_exception.h"
#include "fit/judge/curve_swing.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/open_parameters.h"
#include "fit/judge/residual_pattern.h"
#include "fit/judge/residual_tests.h"
#include "fit/minimise/bounded_step.h"
#include "fit/minimise/minimise_method.h"
#include "fit/minimise/newton_fit.h"
#include "fit/model/ties.h"
#include "fit/residuals/joint_residuals.h"
#include "fit/residuals/model_blocks.h"

namespace tarnwick {
namespace {

using EveryStep = std::function<void(std::span<const double>)>;

/// A try whether more is to be had ends here at the latest.
constexpr std::int32_t kProbeIterations = 50;
/// Residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;
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

/// Weights that follow the values are made anew so often at most.
constexpr int kMostRounds = 60;
/// They have settled when a round moves the parameters by less than this part of their errors; methods that stop by the sum of
/// squares get no nearer than the second.
constexpr double kSettled = 1e-7;
constexpr double kSettledByLines = 1e-3;

bool UsesRandom(const TExprRec* first) {
  for (const TExprRec* record = first; record != nullptr; record = record->Next) {
    if (record->Oper == &NextRandom) return true;
  }
  return false;
}

/// One run over one DataSet or several, on models of its own.
class FitRun {
 public:
  FitRun(std::span<const FitJob> jobs, std::span<const std::string> shared, Progress& progress,
         const EveryStep& every_step);
  FitResult Run();
  /// The share of one DataSet in what Run answered.
  FitResult OfPart(std::size_t number, const FitResult& whole);

 private:
  /// How a fit goes on from values found; `reduced` is empty where the method leaves none.
  using Again = std::function<NewtonOutcome(std::span<const double>, const MinimiseOptions&)>;

  void Add(FitPart& part, std::span<const std::string> shared);
  std::optional<MinimiseOutcome> Refusal() const;
  void Begin();
  void Minimise();
  NewtonOutcome ByMethod(std::span<const double> start, const MinimiseOptions& options);
  void Reweigh(std::span<const double> p);
  void Weigh(FitPart::Loss loss);
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
  void MeasureStarts();
  void MeasureEnd();
  FittedPoints PointsAtEnd();
  void TakeLossIntoAccount(FittedPoints& points);
  double MeasurePattern(LeastSquaresProblem& problem, std::span<const double> p) const;
  void MeasureResiduals(FitPart& part, FitResult& result) const;
  MinimiseOptions Options(std::int32_t iterations) const;
  const FitJob& First() const { return parts_.front()->job; }
  bool ByNewton() const { return First().settings.ProcType == FitProcType::cfp_Newton; }
  LeastSquaresProblem& Problem() { return *problem_; }

  Progress& progress_;
  const EveryStep& every_step_;
  FitWeighting weighting_;
  std::vector<std::unique_ptr<FitPart>> parts_;
  std::optional<JointResiduals> joint_;
  LeastSquaresProblem* problem_ = nullptr;
  FitResult result_;
  std::vector<FitCircumstances> about_;      // one for each part
  std::optional<ReducedJacobian> jacobian_;  // at the last values, when a method left it
};

FitRun::FitRun(std::span<const FitJob> jobs, std::span<const std::string> shared,
               Progress& progress, const EveryStep& every_step)
    : progress_(progress), every_step_(every_step) {
  const bool errors =
      std::ranges::all_of(jobs, [](const FitJob& job) { return !job.errors.empty(); });
  weighting_ = Settled(jobs.front().settings.weighting, errors);
  result_.statistics.weighting = weighting_;
  for (const FitJob& job : jobs) {
    parts_.push_back(std::make_unique<FitPart>(job, weighting_));
    about_.push_back(CircumstancesOf(*parts_.back()));
    Add(*parts_.back(), shared);
  }
}

/// Shared parameters have one column for all; others are named with their DataSet where there are several.
void FitRun::Add(FitPart& part, std::span<const std::string> shared) {
  for (std::int32_t i = 1; i <= part.model.NParams(); ++i) {
    TDBLParameter& parameter = part.model.Param(i);
    if (!parameter.Vary()) continue;
    const bool common = std::ranges::any_of(shared, [&](const std::string& name) {
      return LowerAscii(name) == LowerAscii(parameter.Name());
    });
    const std::string name = common || part.job.data_set.empty()
                                 ? parameter.Name()
                                 : parameter.Name() + " (" + part.job.data_set + ")";
    const auto known = std::ranges::find_if(result_.names, [&](const std::string& other) {
      return common && LowerAscii(other) == LowerAscii(name);
    });
    part.columns.push_back(static_cast<std::size_t>(known - result_.names.begin()));
    if (known != result_.names.end()) {
      parameter.SetValue(result_.start[part.columns.back()]);
    } else {
      result_.names.push_back(name);
      result_.start.push_back(parameter.Value());
    }
  }
  const FitJob& job = part.job;
  result_.points_in_range += job.points_in_range;
  result_.points_used += job.points_chosen;
  result_.points_without_error += job.points_without_error;
  result_.undefined_points +=
      job.points_chosen - job.points_without_error - static_cast<std::int64_t>(job.x.size());
}

/// What keeps the fit from beginning, before any point is looked at.
std::optional<MinimiseOutcome> FitRun::Refusal() const {
  if (result_.start.size() > static_cast<std::size_t>(kMaxVariedParameters))
    return Refused(StopReason::TooManyParameters, std::string(kTooManyParametersText));
  if (weighting_.errors == FitErrors::Absolute && weighting_.loss != FitLoss::Linear)
    return Refused(StopReason::BadModel,
                   "Nothing was fitted: absolute errors need the linear loss, a robust one tells "
                   "errors by the residuals.");
  for (const auto& part : parts_) {
    const FitJob& job = part->job;
    if (std::string trouble = LimitTrouble(job.settings.parameters); !trouble.empty())
      return Refused(StopReason::BadModel, "Nothing was fitted: " + trouble);
    if (part->model.CurrentRec() == nullptr)
      return Refused(StopReason::BadModel, "The model has no expression.");
    if (UsesRandom(part->model.CurrentRec())) {
      return Refused(StopReason::BadModel,
                     "The model uses random: another curve each time it is computed cannot be "
                     "fitted.");
    }
    if (job.x.empty()) return Refused(StopReason::NoPoints);
    if (weighting_.weights == FitWeights::Errors && job.errors.empty())
      return Refused(StopReason::BadModel,
                     "Nothing was fitted: the points have no errors of Y to weigh them by.");
  }
  return std::nullopt;
}

/// From here on there are residuals.
void FitRun::Begin() {
  std::vector<JointResiduals::Part> parts;
  for (const auto& part : parts_) {
    part->Begin();
    parts.push_back({&*part->residuals, part->columns});
  }
  if (parts_.size() > 1) joint_.emplace(std::move(parts), result_.start.size());
  problem_ = joint_ ? static_cast<LeastSquaresProblem*>(&*joint_) : &*parts_.front()->residuals;
}

void FitRun::Reweigh(std::span<const double> p) {
  for (const auto& part : parts_) part->Reweigh(part->Local(p));
}

void FitRun::Weigh(FitPart::Loss loss) {
  for (const auto& part : parts_) part->Weigh(loss);
}

MinimiseOptions FitRun::Options(std::int32_t iterations) const {
  MinimiseOptions options;
  options.tolerance = First().settings.Tolerance;
  options.max_iterations = iterations;
  return options;
}

/// The one place that knows which method is run how.
void FitRun::Minimise() {
  MinimiseOptions options = Options(First().settings.IterMax);
  options.every_step = every_step_;
  if (ByNewton()) {
    NewtonOutcome newton = FitByNewton(Problem(), result_.start, options, progress_);
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
  const MinimiseMethod* const method = FindScalarMinimiseMethod(First().settings.ProcType);
  if (method == nullptr) return MinimiseNewton(Problem(), start, options, progress_);
  const ScalarObjective objective = [this](std::span<const double> p) {
    return Problem().SumOfSquares(p);
  };
  const Box box(Problem().Ranges());
  if (!box.Bounds()) return {method->minimise(objective, start, options, progress_), {}};
  NewtonOutcome outcome{method->minimise(ContinuedBeyond(objective, box, objective(start)), start,
                                         options, progress_),
                        {}};
  if (!Failed(outcome.outcome.why)) PutIntoBox(objective, box, outcome.outcome);
  return outcome;
}

/// Iteratively reweighted least squares: weights by the values found, values by the weights, until both agree.
void FitRun::SettleWeights(const Again& again, double near) {
  if (!IsIterated(weighting_)) return;
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
  MinimiseOptions options = Options(First().settings.IterMax - result_.outcome.iterations);
  options.every_step = every_step_;
  if (options.max_iterations <= 0) {
    result_.outcome.why = StopReason::IterationLimit;
    result_.outcome.stop_test = "the greatest number of iterations was reached";
    return true;
  }
  const std::vector<double> from = result_.outcome.p;
  Reweigh(from);
  NewtonOutcome next = again(from, options);
  if (Failed(next.outcome.why)) {
    next.outcome.p = from;
    next.outcome.why = StopReason::NoFurtherDescent;
  }
  const double moved = Moved(from, next);
  const double free_points =
      static_cast<double>(Problem().PointCount()) - static_cast<double>(from.size());
  const double deviation = std::sqrt(next.outcome.value / std::max(free_points, 1.0));
  GoOnWith(std::move(next));
  return !(moved > near * deviation + kRounding * Problem().NormOfY());
}

/// How far apart the values are, in the length of the residuals that they change.
double FitRun::Moved(std::span<const double> from, NewtonOutcome& to) {
  const std::vector<double>& p = to.outcome.p;
  if (std::ranges::equal(from, p)) return 0;
  const ReducedJacobian reduced =
      to.reduced.r.size() > 0 ? to.reduced : Problem().Reduce(p, Reduction::NormalEquations);
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
  points.count = static_cast<std::int64_t>(problem_->PointCount()) - undefined;
  points.sum_about_mean = problem_->SumAboutMean();
  if (!problem_->HasExactDerivatives()) points.derivative_accuracy = kDifferenceAccuracy;
  points.weighting = weighting_;
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
  NewtonOutcome here = FitByNewton(Problem(), result_.outcome.p, options, progress);
  if (!result_.outcome.changed || progress.Cancelled() || !LedAstray(here)) return here;
  NewtonOutcome again = FitByNewton(Problem(), result_.start, options, progress);
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
  MinimiseOptions options = Options(First().settings.IterMax);
  options.every_step = every_step_;
  GoOnWith(NewtonFromValues(options, progress_));
  const Again by_newton = [this](std::span<const double> from, const MinimiseOptions& rest) {
    return MinimiseNewton(Problem(), from, rest, progress_);
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

void FitRun::MeasureStarts() {
  for (std::size_t i = 0; i < parts_.size(); ++i) MeasureStart(*parts_[i], about_[i]);
}

/// Statistics at the values that now hold.
void FitRun::MeasureEnd() {
  ReducedJacobian none;
  none.r.resize(0, 0);
  if (result_.values.empty()) {
    none.sum_of_squares = Problem().SumOfSquares({});
    result_.outcome.start_value = result_.outcome.value = none.sum_of_squares;
    jacobian_ = std::move(none);
  } else if (!jacobian_) {
    jacobian_ = Problem().Reduce(result_.values, Reduction::Orthogonal);
  }
  const FittedPoints points = PointsAtEnd();
  const std::vector<bool> held = Box(Problem().Ranges()).OnBounds(result_.values);
  FitFigures figures = ComputeFitFigures(Holding(*jacobian_, held), points);
  result_.statistics = std::move(figures.statistics);
  result_.statistics.weighting.loss_scale = parts_.front()->weights->LossScale();
  for (const auto& part : parts_) result_.points_without_weight += part->weights->WithoutWeight();
  result_.statistics.residual_correlation = MeasurePattern(Problem(), result_.values);
  result_.singular_directions = std::move(figures.singular_directions);
  for (std::size_t i = 0; i < held.size(); ++i) {
    if (held[i]) result_.at_bound.push_back(static_cast<std::int32_t>(i));
  }
  std::ranges::set_difference(figures.unmoved, result_.at_bound,
                              std::back_inserter(result_.unmoved));
  if (!joint_) result_.tied = TiesOf(*parts_.front(), result_);
  result_.undefined_points += jacobian_->undefined;
  if (!joint_) MeasureResiduals(*parts_.front(), result_);
}

/// With what the statistics need where points do not all weigh alike.
FittedPoints FitRun::PointsAtEnd() {
  FittedPoints points = Points(jacobian_->undefined);
  points.mean_variance = parts_.size() == 1 ? parts_.front()->MeanVariance() : 1;
  for (const auto& part : parts_)
    points.likelihood_term += part->LikelihoodTerm(part->Local(result_.values));
  if (weighting_.loss != FitLoss::Linear) TakeLossIntoAccount(points);
  return points;
}

/// The Jacobian becomes that of all points in full: the loss is in the variance. Each DataSet has its own scale; what they tell
/// of the variance counts by their points.
void FitRun::TakeLossIntoAccount(FittedPoints& points) {
  double variance = 0;
  double measurement = 0;
  const auto count = static_cast<double>(Problem().PointCount());
  for (const auto& part : parts_) {
    const std::vector<double> rest = part->ResidualsWithoutLoss(part->Local(result_.values));
    const double share = static_cast<double>(part->job.x.size()) / count;
    const double deviation = part->weights->RobustDeviation();
    variance += share * RobustVariance(weighting_.loss, part->weights->LossScale(), rest,
                                       part->columns.size());
    measurement += share * deviation * deviation;
  }
  points.robust_variance = variance;
  points.robust_measurement = measurement;
  if (result_.values.empty()) return;
  const double sum_of_squares = jacobian_->sum_of_squares;
  Weigh(FitPart::Loss::Without);
  jacobian_ = Problem().Reduce(result_.values, Reduction::Orthogonal);
  Weigh(FitPart::Loss::With);
  jacobian_->sum_of_squares = sum_of_squares;
}

/// Undefined where the residuals are but the rounding of Y.
double FitRun::MeasurePattern(LeastSquaresProblem& problem, std::span<const double> p) const {
  const std::vector<double> rest = problem.Residuals(p, kPatternPoints);
  double greatest_y = 0;
  for (const auto& part : parts_) greatest_y = std::max(greatest_y, part->GreatestY());
  double greatest = 0;
  for (const double r : rest) greatest = std::max(greatest, std::abs(r));
  const double rounding = std::max(kRounding * greatest_y, kSmallestSquared);
  return greatest > rounding ? FindPattern(rest).neighbour_correlation : kUndefined;
}

/// What the points of one DataSet say against its curve. Where the residuals are but the rounding of Y, there is nothing in
/// them to find.
void FitRun::MeasureResiduals(FitPart& part, FitResult& result) const {
  ModelResiduals& residuals = *part.residuals;
  result.swing = GreatestSwing(residuals, part.job.x, result.values);
  const ResidualSample sample = residuals.Sample(result.values, kPatternPoints);
  result.traded = TradedParameters(result.statistics, result.values, sample);
  if (IsUndefined(result.statistics.residual_correlation)) return;
  result.residuals = TestResiduals(sample);
  result.open = OpenParameters(residuals, result.values, result.statistics, sample);
}

/// What follows a run that did not fail: a finishing one, or a try whether that would pay, and the statistics.
void FitRun::Conclude() {
  const StopReason why = result_.outcome.why;
  const bool more = why != StopReason::Cancelled && why != StopReason::NothingVaried && !ByNewton();
  if (more && First().options.finish == FinishingStep::Yes) FinishByNewton();
  result_.values = result_.outcome.p;
  if (IsIterated(weighting_)) result_.outcome.start_value = Problem().SumOfSquares(result_.start);
  MeasureEnd();
  if (more && First().options.finish == FinishingStep::No) ProbeByNewton();
}

FitResult FitRun::Run() {
  result_.outcome.p = result_.values = result_.start;
  if (std::optional<MinimiseOutcome> refusal = Refusal()) {
    result_.outcome = *std::move(refusal);
  } else {
    try {
      Begin();
      if (result_.start.empty()) {
        for (int i = 0; i < kMostRounds && IsIterated(weighting_); ++i) Reweigh({});
        MeasureStarts();
        if (!Together(about_).unknown_names.empty())
          result_.outcome = Refused(StopReason::UndefinedAtStart);
      } else {
        Minimise();
        if (Failed(result_.outcome.why)) MeasureStarts();
      }
      if (!Failed(result_.outcome.why)) Conclude();
    } catch (const EIntegerDivision& error) {
      result_.outcome = Refused(StopReason::BadModel, error.what());
    }
  }
  if (Failed(result_.outcome.why)) result_.outcome.p = result_.values = result_.start;
  result_.verdict = JudgeFit(result_, Together(about_));
  return result_;
}

FitResult FitRun::OfPart(std::size_t number, const FitResult& whole) {
  FitPart& part = *parts_[number];
  FitResult result = ShareOf(part, whole);
  if (!Failed(whole.outcome.why)) {
    const std::vector<double> rest = part.residuals->Residuals(result.values, part.job.x.size());
    const auto undefined = std::ranges::count_if(rest, [](double r) { return !std::isfinite(r); });
    result.undefined_points += undefined;
    result.statistics.points = static_cast<std::int64_t>(rest.size()) - undefined;
    result.statistics.residual_correlation = MeasurePattern(*part.residuals, result.values);
    result.tied = TiesOf(part, result);
    MeasureResiduals(part, result);
  }
  result.verdict = JudgeFit(result, about_[number]);
  return result;
}

}  // namespace

FitResult RunFit(const FitJob& job, Progress& progress, const EveryStep& every_step) {
  progress.Begin("Fitting Data....", "", job.settings.IterMax);
  return FitRun({&job, 1}, {}, progress, every_step).Run();
}

JointFit RunJointFit(std::span<const FitJob> jobs, std::span<const std::string> shared,
                     Progress& progress) {
  CheckShared(jobs, shared);
  progress.Begin("Fitting Data....", "", jobs.front().settings.IterMax);
  const EveryStep unseen;
  FitRun run(jobs, shared, progress, unseen);
  JointFit fit;
  fit.whole = run.Run();
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    fit.parts.push_back(run.OfPart(i, fit.whole));
    if (!fit.parts.back().verdict.trustworthy) fit.whole.verdict.trustworthy = false;
  }
  return fit;
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
