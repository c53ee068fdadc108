#include "analysis/fits/fit_run.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

#include "analysis/fits/fit_circumstances.h"
#include "analysis/fits/fit_minimisation.h"
#include "analysis/fits/fit_part.h"
#include "analysis/fits/fit_share.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "expr/words/parser_exception.h"
#include "fit/judge/curve_swing.h"
#include "fit/judge/equal_values.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/fit_verdict.h"
#include "fit/judge/open_parameters.h"
#include "fit/judge/residual_pattern.h"
#include "fit/judge/residual_tests.h"
#include "fit/minimise/absent_terms.h"
#include "fit/minimise/bounded_step.h"
#include "fit/model/random_model.h"
#include "fit/model/ties.h"
#include "fit/residuals/greatest_size.h"
#include "fit/residuals/joint_residuals.h"

namespace tarnwick {
namespace {

using EveryStep = std::function<void(std::span<const double>)>;

/// Residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;

MinimiseOutcome Refused(StopReason why, std::string message = {}) {
  MinimiseOutcome outcome;
  outcome.why = why;
  outcome.message = std::move(message);
  outcome.start_value = outcome.value = kUndefined;
  return outcome;
}

std::string NothingWeighs(FitWeights weights) {
  return std::string(
             "Nothing was fitted: no point has a weight, because the curve that comes nearest "
             "is ") +
         (weights == FitWeights::Counts ? "nowhere above 0, as counts are." : "0 everywhere.");
}

/// One run over one DataSet or several, on models of its own.
class FitRun {
 public:
  FitRun(std::span<const FitJob> jobs, std::span<const std::string> shared, Progress& progress,
         const EveryStep& every_step);
  FitResult Run();
  /// The values that the job has, without a run.
  FitResult Judge(MinimiseOutcome ended);
  /// The share of one DataSet in what Run answered.
  FitResult OfPart(std::size_t number, const FitResult& whole);
  /// The varied values of each DataSet among those of the fit.
  std::vector<std::vector<double>> OfParts(std::span<const double> p) const;
  /// Of what Run answered, once its shares are known, and of the shares, once that is.
  void JudgeTogether(JointFit& fit) const;

 private:
  void Add(FitPart& part, std::span<const std::string> shared);
  std::optional<MinimiseOutcome> Refusal() const;
  void Begin();
  void Reweigh(std::span<const double> p);
  void Weigh(FitPart::Loss loss);
  void Conclude();
  void MeasureStarts();
  void MeasureEnd();
  void MeasureTerms();
  std::int64_t WithoutWeight() const;
  FittedPoints PointsAtEnd();
  void TakeLossIntoAccount(FittedPoints& points);
  double MeasurePattern(LeastSquaresProblem& problem, std::span<const double> p) const;
  void MeasureResiduals(FitPart& part, FitResult& result) const;
  const FitJob& First() const { return parts_.front()->job; }
  bool ByNewton() const { return First().settings.ProcType == FitProcType::cfp_Newton; }
  LeastSquaresProblem& Problem() { return *problem_; }

  Progress& progress_;
  const EveryStep& every_step_;
  FitWeighting weighting_;
  std::vector<std::unique_ptr<FitPart>> parts_;
  std::optional<JointResiduals> joint_;
  LeastSquaresProblem* problem_ = nullptr;
  std::optional<FitMinimisation> minimisation_;
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
    if (std::string trouble = RandomTrouble(part->model); !trouble.empty())
      return Refused(StopReason::BadModel, std::move(trouble));
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
  result_.statistics.residual_correlation = MeasurePattern(Problem(), result_.values);
  result_.singular_directions = std::move(figures.singular_directions);
  for (std::size_t i = 0; i < held.size(); ++i) {
    if (held[i]) result_.at_bound.push_back(static_cast<std::int32_t>(i));
  }
  std::ranges::set_difference(figures.unmoved, result_.at_bound,
                              std::back_inserter(result_.unmoved));
  if (!joint_) result_.tied = TiesOf(*parts_.front(), result_);
  result_.undefined_points += jacobian_->undefined;
  MeasureTerms();
  if (!joint_) MeasureResiduals(*parts_.front(), result_);
}

/// Nothing where parameters run away, which is told instead, and where there are more than a fit varies: groups of peaks, each of
/// which stood out of the noise before.
void FitRun::MeasureTerms() {
  if (!result_.singular_directions.empty() || !result_.unmoved.empty() ||
      result_.values.size() > static_cast<std::size_t>(kMaxVariedParameters))
    return;
  QuietProgress quiet(progress_, result_.outcome.iterations);
  result_.absent = FindAbsentTerms(Problem(), result_.values, result_.statistics, quiet);
}

/// Points whose weights came to nothing.
std::int64_t FitRun::WithoutWeight() const {
  std::int64_t count = 0;
  for (const auto& part : parts_) count += part->weights->WithoutWeight();
  return count;
}

/// With what the statistics need where points do not all weigh alike. What weighs nothing checks nothing.
FittedPoints FitRun::PointsAtEnd() {
  result_.points_without_weight = WithoutWeight();
  FittedPoints points =
      PointsOf(*problem_, weighting_, jacobian_->undefined + result_.points_without_weight);
  points.mean_variance = parts_.size() == 1 ? parts_.front()->MeanVariance() : 1;
  for (const auto& part : parts_)
    points.likelihood_term += part->LikelihoodTerm(part->Local(result_.values));
  if (weighting_.loss == FitLoss::Linear) return points;
  for (std::size_t i = 0; i < parts_.size(); ++i) MeasureOutliers(*parts_[i], about_[i]);
  TakeLossIntoAccount(points);
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
  for (const auto& part : parts_) greatest_y = std::max(greatest_y, part->GreatestWeightedY());
  const double greatest = GreatestSize(rest);
  const double rounding = std::max(kRounding * greatest_y, kSmallestSquared);
  return greatest > rounding ? FindPattern(rest).neighbour_correlation : kUndefined;
}

/// What the points of one DataSet say against its curve. Where the residuals are but the rounding of Y, there is nothing in
/// them to find.
void FitRun::MeasureResiduals(FitPart& part, FitResult& result) const {
  ModelResiduals& residuals = *part.residuals;
  result.swing = GreatestSwing(residuals, part.job.x, result.values);
  result.equal = FindEqualValues(residuals, part.job.x, result.values);
  result.equal_sets = FindEqualSets(residuals, part.job.x, result.values, result.equal);
  const ResidualSample sample = residuals.Sample(result.values, kPatternPoints);
  result.traded = TradedParameters(result.statistics, result.values, sample);
  if (IsUndefined(result.statistics.residual_correlation)) return;
  result.residuals = TestResiduals(weighting_.loss == FitLoss::Linear
                                       ? sample
                                       : part.SampleToTest(result.values, kPatternPoints));
  AmongMany(parts_.size(), result.residuals);
  result.open = OpenParameters(residuals, result.values, result.statistics, sample);
  result.limits = LimitParameters(residuals, result.values, result.statistics, sample);
}

/// What follows a run that did not fail: a finishing one, or a try whether that would pay, and the statistics.
void FitRun::Conclude() {
  const StopReason why = result_.outcome.why;
  const bool more = why != StopReason::Cancelled && why != StopReason::NothingVaried && !ByNewton();
  const FinishingStep finish = First().options.finish;
  if (more && finish == FinishingStep::Yes) {
    minimisation_->Finish();
    result_.outcome = minimisation_->Outcome();
  }
  if (minimisation_) jacobian_ = minimisation_->Jacobian();
  result_.values = result_.outcome.p;
  if (IsIterated(weighting_)) result_.outcome.start_value = Problem().SumOfSquares(result_.start);
  MeasureEnd();
  if (more && finish == FinishingStep::No) result_.newton_sum_of_squares = minimisation_->Probe();
}

FitResult FitRun::Run() {
  result_.outcome.p = result_.values = result_.start;
  if (std::optional<MinimiseOutcome> refusal = Refusal()) {
    result_.outcome = *std::move(refusal);
  } else {
    try {
      Begin();
      if (result_.start.empty()) {
        for (int i = 0; i < kMostWeightRounds && IsIterated(weighting_); ++i) Reweigh({});
        MeasureStarts();
        if (!Together(about_).unknown_names.empty())
          result_.outcome = Refused(StopReason::UndefinedAtStart);
      } else {
        minimisation_.emplace(parts_, Problem(), result_.start, progress_, every_step_);
        minimisation_->Run();
        result_.outcome = minimisation_->Outcome();
        if (Failed(result_.outcome.why)) MeasureStarts();
        if (WithoutWeight() == static_cast<std::int64_t>(Problem().PointCount()))
          result_.outcome = Refused(StopReason::BadModel, NothingWeighs(weighting_.weights));
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

FitResult FitRun::Judge(MinimiseOutcome ended) {
  Begin();
  result_.outcome = std::move(ended);
  result_.outcome.p = result_.values = result_.start;
  result_.outcome.value = Problem().SumOfSquares(result_.values);
  MeasureEnd();
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
    result.statistics.points =
        static_cast<std::int64_t>(rest.size()) - undefined - result.points_without_weight;
    result.statistics.residual_correlation = MeasurePattern(*part.residuals, result.values);
    result.tied = TiesOf(part, result);
    MeasureResiduals(part, result);
  }
  result.verdict = JudgeFit(result, about_[number]);
  return result;
}

std::vector<std::vector<double>> FitRun::OfParts(std::span<const double> p) const {
  std::vector<std::vector<double>> values;
  for (const std::unique_ptr<FitPart>& part : parts_) values.push_back(part->Local(p));
  return values;
}

void FitRun::JudgeTogether(JointFit& fit) const {
  std::vector<FitShare> shares;
  for (std::size_t i = 0; i < parts_.size(); ++i)
    shares.push_back(
        {parts_[i]->job.data_set, &fit.parts[i], &about_[i], IsTestedByAll(parts_, *parts_[i])});
  const bool ask_all = std::ranges::any_of(shares, [](const FitShare& share) {
    return share.tested_by_all && share.result->verdict.untested;
  });
  if (ask_all && !IsUndefined(fit.whole.statistics.residual_correlation)) {
    fit.whole.residuals = TestResiduals(SampleOfAll(parts_, fit.whole.values, kPatternPoints));
    fit.whole.residuals.of_several = true;
    for (FitShare& share : shares) share.tested_by_all &= fit.whole.residuals.freedom > 0;
  }
  fit.whole.verdict = JudgeJointFit(fit.whole, Together(about_), shares);
  for (std::size_t i = 0; i < parts_.size(); ++i)
    fit.parts[i].verdict = JudgeShare(shares[i], fit.whole);
}

}  // namespace

FitResult RunFit(const FitJob& job, Progress& progress, const EveryStep& every_step) {
  progress.Begin("Fitting Data....", "", job.settings.IterMax);
  return FitRun({&job, 1}, {}, progress, every_step).Run();
}

FitResult JudgeValues(const FitJob& job, MinimiseOutcome ended, Progress& progress) {
  const EveryStep unseen;
  return FitRun({&job, 1}, {}, progress, unseen).Judge(std::move(ended));
}

JointFit RunJointFit(std::span<const FitJob> jobs, std::span<const std::string> shared,
                     Progress& progress, const EveryJointStep& every_step) {
  CheckShared(jobs, shared);
  progress.Begin("Fitting Data....", "", jobs.front().settings.IterMax);
  EveryStep of_all;
  FitRun run(jobs, shared, progress, of_all);
  if (every_step) of_all = [&](std::span<const double> p) { every_step(run.OfParts(p)); };
  JointFit fit;
  fit.whole = run.Run();
  for (std::size_t i = 0; i < jobs.size(); ++i) fit.parts.push_back(run.OfPart(i, fit.whole));
  run.JudgeTogether(fit);
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
  fit.Change(MarkModified::No);
}

}  // namespace tarnwick
