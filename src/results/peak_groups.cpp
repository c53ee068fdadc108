#include "results/peak_groups.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "analysis/fits/fit_minimisation.h"
#include "analysis/fits/fit_part.h"
#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/number_text.h"
#include "fit/judge/fit_statistics.h"
#include "fit/minimise/minimise_newton.h"

namespace tarnwick {
namespace {

constexpr int kMostRounds = 20;
constexpr int kStepsOfRound = 3;  // more are for nothing while the other groups move
constexpr double kStill = 0.1;    // of its error that a value may move by in the last round

/// Peaks from `first` on, from 0, that are fitted together.
struct Group {
  std::size_t first = 0;
  std::size_t count = 0;
};

class GroupsFit {
 public:
  GroupsFit(const FitJob& job, const Recognised& found, Progress& progress)
      : job_(job),
        found_(found),
        progress_(progress),
        weighting_(Settled(job.settings.weighting, !job.errors.empty())),
        model_(job.settings) {
    const bool by_points =
        weighting_.weights == FitWeights::None || weighting_.weights == FitWeights::Errors;
    if (!by_points || weighting_.loss != FitLoss::Linear)
      throw Error(
          "Peaks are not fitted in groups with weights that follow the curve, or with a robust "
          "loss.");
    per_peak_ = found.row->parameters.size();
    const std::size_t most =
        (static_cast<std::size_t>(kMaxVariedParameters) - kLineParameters) / per_peak_;
    const std::size_t groups = (found.peaks + most - 1) / most;
    for (std::size_t i = 0; i < groups; ++i) {
      const std::size_t first = i * found.peaks / groups;
      groups_.push_back({first, (i + 1) * found.peaks / groups - first});
    }
    peaks_.resize(found.peaks);
  }

  PeakGroupsFit Run() {
    int rounds = 0;
    bool moved = true;
    for (; moved && rounds < kMostRounds; ++rounds) {
      moved = false;
      for (const Group& group : groups_) moved = FitGroup(group) || moved;
    }
    FitLine();
    const FitResult whole = JudgeWhole(rounds, moved);
    for (std::size_t peak = 0; peak < peaks_.size(); ++peak)
      peaks_[peak] = FittedPeakOf(model_, found_, peak, &whole);
    return {model_, peaks_, whole.verdict, Told(rounds, moved)};
  }

 private:
  ParameterSettings& ParameterOf(std::size_t peak, std::size_t which) {
    return model_.parameters[kLineParameters + peak * per_peak_ + which];
  }

  /// X that the centre of a peak may have, at least and at most: the valleys beside it.
  double LeftOf(std::size_t peak) { return CentreOf(peak).Low; }
  double RightOf(std::size_t peak) { return CentreOf(peak).High; }
  ParameterSettings& CentreOf(std::size_t peak) {
    const auto centre =
        std::ranges::find(found_.row->parameters, PeakBound::Valleys, &PeakParameter::bound);
    return ParameterOf(peak, static_cast<std::size_t>(centre - found_.row->parameters.begin()));
  }

  /// The points over the group and the peaks beside it, less all peaks of other groups.
  FitJob JobOf(const Group& group) {
    const std::size_t last = group.first + group.count - 1;
    const double left = LeftOf(group.first == 0 ? 0 : group.first - 1);
    const double right = RightOf(std::min(last + 1, found_.peaks - 1));
    const auto begin = std::ranges::lower_bound(job_.x, left) - job_.x.begin();
    const auto end = std::ranges::upper_bound(job_.x, right) - job_.x.begin();
    FitJob part = job_;
    part.x.assign(job_.x.begin() + begin, job_.x.begin() + end);
    part.y.assign(job_.y.begin() + begin, job_.y.begin() + end);
    if (!job_.errors.empty())
      part.errors.assign(job_.errors.begin() + begin, job_.errors.begin() + end);
    part.points_in_range = part.points_chosen = end - begin;
    const std::string others = PeaksText(*found_.row, 1, group.first) +
                               PeaksText(*found_.row, last + 2, found_.peaks - last - 1);
    if (!others.empty()) {
      const std::vector<double> held = ValuesAs(model_, others.substr(1), part.x);
      std::ranges::transform(part.y, held, part.y.begin(), std::minus());
    }
    part.settings = SettingsOf(group);
    return part;
  }

  /// The group's peaks on a line of its own, which takes up what the tails of the others still lack.
  FitSettings SettingsOf(const Group& group) {
    FitSettings settings = model_;
    settings.Expression = "b0+b1*x" + PeaksText(*found_.row, group.first + 1, group.count);
    settings.parameters.resize(kLineParameters);
    for (std::size_t i = 0; i < group.count * per_peak_; ++i)
      settings.parameters.push_back(ParameterOf(group.first, i));
    for (ParameterSettings& parameter : settings.parameters) parameter.Vary = true;
    return settings;
  }

  /// The minimum next to the present values, with its covariance.
  FitResult Minimised(const FitJob& job) {
    FitPart part(job, weighting_);
    part.Begin();
    FitResult result;
    for (const ParameterSettings& parameter : job.settings.parameters)
      result.names.push_back(parameter.Name);
    MinimiseOptions options;
    options.tolerance = job.settings.Tolerance;
    options.max_iterations = kStepsOfRound;
    const NewtonOutcome newton =
        MinimiseNewton(*part.residuals, part.residuals->Start(), options, progress_);
    if (progress_.Cancelled()) throw Error("The fit was cancelled; the peaks are as they were.");
    if (Failed(newton.outcome.why))
      throw Error("A group of peaks cannot be fitted: " + newton.outcome.message);
    result.values = newton.outcome.p;
    result.statistics =
        ComputeFitFigures(newton.reduced, PointsOf(*part.residuals, weighting_, 0)).statistics;
    return result;
  }

  /// Whether a peak's value moved.
  bool FitGroup(const Group& group) {
    const FitResult result = Minimised(JobOf(group));
    const std::vector<double>& errors = result.statistics.standard_errors;
    bool moved = false;
    for (std::size_t i = kLineParameters; i < result.values.size(); ++i) {
      double& value = ParameterOf(group.first, i - kLineParameters).Value;
      const double by = std::abs(result.values[i] - value);
      const bool has_error = i < errors.size() && errors[i] > 0;
      moved = moved || by > (has_error ? kStill * errors[i] : 1e-6 * std::abs(value));
      value = result.values[i];
    }
    for (std::size_t peak = group.first; peak < group.first + group.count; ++peak)
      peaks_[peak] = FittedPeakOf(model_, found_, peak, &result);
    return moved;
  }

  /// All parameters at once, at the values found.
  FitResult JudgeWhole(int rounds, bool moved) {
    FitJob job = job_;
    job.settings = model_;
    for (ParameterSettings& parameter : job.settings.parameters) parameter.Vary = true;
    MinimiseOutcome ended;
    ended.why = moved ? StopReason::IterationLimit : StopReason::Converged;
    ended.iterations = rounds;
    return JudgeValues(job, std::move(ended), progress_);
  }

  void FitLine() {
    const std::vector<double> peaks =
        ValuesAs(model_, PeaksText(*found_.row, 1, found_.peaks).substr(1), job_.x);
    long double n = 0;
    long double sum_x = 0;
    long double sum_y = 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
      const long double weight = WeightOf(i);
      n += weight;
      sum_x += weight * job_.x[i];
      sum_y += weight * (job_.y[i] - peaks[i]);
    }
    long double sum_xx = 0;
    long double sum_xy = 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
      const long double from_mean = job_.x[i] - sum_x / n;
      sum_xx += WeightOf(i) * from_mean * from_mean;
      sum_xy += WeightOf(i) * from_mean * (job_.y[i] - peaks[i]);
    }
    const long double slope = sum_xx > 0 ? sum_xy / sum_xx : 0;
    model_.parameters[0].Value = static_cast<double>((sum_y - slope * sum_x) / n);
    model_.parameters[1].Value = static_cast<double>(slope);
  }

  double WeightOf(std::size_t point) const {
    return weighting_.weights == FitWeights::None ? 1
                                                  : 1 / (job_.errors[point] * job_.errors[point]);
  }

  std::string Told(int rounds, bool moved) const {
    std::string told = "Fitted in " + std::to_string(groups_.size()) + " groups of neighbours, " +
                       Counted(rounds, "round") + ", since a fit varies " +
                       std::to_string(kMaxVariedParameters) +
                       " parameters at most: each group on a line of its own. Errors are "
                       "those of all parameters together.";
    if (moved) told += " The values still moved in the last round.";
    return told;
  }

  const FitJob& job_;
  const Recognised found_;
  Progress& progress_;
  const FitWeighting weighting_;
  FitSettings model_;
  std::size_t per_peak_ = 0;
  std::vector<Group> groups_;
  std::vector<FittedPeak> peaks_;
};

}  // namespace

PeakGroupsFit FitPeakGroups(const FitJob& job, Progress& progress) {
  const std::optional<Recognised> found = Recognise(job.settings);
  if (!found) throw Error("The model has no peaks.");
  return GroupsFit(job, *found, progress).Run();
}

}  // namespace tarnwick
