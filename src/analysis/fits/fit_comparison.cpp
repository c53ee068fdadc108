#include "analysis/fits/fit_comparison.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "fit/judge/distributions.h"
#include "fit/model/curve_fit.h"
#include "fit/model/find_parameter.h"
#include "fit/model/model_values.h"
#include "fit/residuals/sums_of_y.h"

namespace tarnwick {
namespace {

/// A model takes on a curve when it leaves no more than this part of it: less than one that only comes near it as parameters run
/// away (a*exp(-k*x)+c to a line), whose terms then cancel, can reach.
constexpr double kSameCurve = 1e-9;
/// The smaller model's curve is also taken with its parameters changed by these parts of their size.
constexpr double kChanges[] = {0, 0.03, -0.05};
/// From here the larger model is fitted to the smaller one's curve once more, to see whether it comes to the same values.
constexpr double kOtherStarts[] = {0.05, -0.05};
/// Of the size of a value: far above what rounding leaves open, far below the way between the starts.
constexpr double kSameValue = 1e-3;

bool CanBeTested(const FitResult& result) {
  const FitWeighting& weighting = result.statistics.weighting;
  return !Failed(result.outcome.why) && weighting.loss == FitLoss::Linear &&
         (weighting.weights == FitWeights::None || weighting.weights == FitWeights::Errors) &&
         result.at_bound.empty() && result.statistics.degrees_of_freedom > 0;
}

/// The model with the values found, each varied one changed by this part of its size and its number.
FitSettings Changed(const FitJob& job, const FitResult& result, double change) {
  FitSettings settings = job.settings;
  std::size_t next = 0;
  for (ParameterSettings& one : settings.parameters) {
    if (!one.Vary || next >= result.values.size()) continue;
    one.Value = result.values[next++];
    const double size = one.Value == 0 ? 1 : std::abs(one.Value);
    const double sign = next % 2 == 0 ? 1 : -1;
    one.Value = std::clamp(one.Value + sign * change * size, one.Low, one.High);
  }
  return settings;
}

void TakeValuesByName(const FitSettings& from, FitSettings& to) {
  for (ParameterSettings& one : to.parameters) {
    const ParameterSettings* const same = FindParameter(from.parameters, one.Name);
    if (same != nullptr && one.Vary) one.Value = std::clamp(same->Value, one.Low, one.High);
  }
}

/// The fit of the larger model to the curve, if it takes that on.
std::optional<FitResult> TakesOn(const FitSettings& larger, const FitJob& curve) {
  FitJob job = curve;
  job.settings = larger;
  job.settings.weighting = {FitWeights::None};
  job.settings.ProcType = FitProcType::cfp_Newton;
  NoProgress progress;
  FitResult fit = RunFit(job, progress);
  const double limit = kSameCurve * kSameCurve * SumUpY(curve.y).about_mean;
  if (Failed(fit.outcome.why) || fit.undefined_points != 0 || !(fit.outcome.value <= limit))
    return std::nullopt;
  return fit;
}

/// The smaller model's curve, changed by that part of its values.
FitJob CurveOf(const FitJob& smaller, const FitResult& result, double change) {
  TCurFit model;
  model.SetSettings(Changed(smaller, result, change), MarkModified::No);
  model.Prepare();
  FitJob curve = smaller;
  curve.errors.clear();
  curve.y = ModelValues(model, curve.x);
  return curve;
}

/// Parameters of like parts of a model may change their places.
bool AreAlike(std::vector<double> some, std::vector<double> others) {
  std::ranges::sort(some);
  std::ranges::sort(others);
  return std::ranges::equal(some, others, [](double a, double b) {
    return std::abs(a - b) <= kSameValue * std::max({std::abs(a), std::abs(b), kSameValue});
  });
}

/// The larger model takes on the smaller one's curve with other values, too.
bool HasOtherValues(const FitJob& smaller, const FitResult& result, const FitJob& larger,
                    const FitResult& larger_result) {
  const FitJob curve = CurveOf(smaller, result, 0);
  std::optional<FitResult> first = TakesOn(Changed(larger, larger_result, 0), curve);
  for (const double change : kOtherStarts) {
    const std::optional<FitResult> next = TakesOn(Changed(larger, larger_result, change), curve);
    if (first && next && !AreAlike(first->values, next->values)) return true;
    if (!first) first = next;
  }
  return false;
}

bool IsWithin(const FitJob& smaller, const FitResult& result, const FitJob& larger,
              const FitResult& larger_result) {
  for (const double change : kChanges) {
    const FitJob curve = CurveOf(smaller, result, change);
    FitSettings named = larger.settings;
    TakeValuesByName(Changed(smaller, result, change), named);
    if (!TakesOn(named, curve) && !TakesOn(Changed(larger, larger_result, 0), curve)) return false;
  }
  return true;
}

NestedTest TestOf(std::size_t smaller, std::size_t larger, std::span<const FitResult> results) {
  const FitStatistics& few = results[smaller].statistics;
  const FitStatistics& many = results[larger].statistics;
  NestedTest test{smaller, larger};
  test.added = many.varied - few.varied;
  test.free = many.degrees_of_freedom;
  const double gain = std::max(few.sum_of_squares - many.sum_of_squares, 0.0);
  test.ratio = gain / static_cast<double>(test.added) /
               (many.sum_of_squares / static_cast<double>(test.free));
  test.probability = VarianceRatioProbability(test.ratio, test.added, test.free);
  return test;
}

std::vector<RankedModel> Ranked(std::span<const FitResult> results) {
  std::vector<RankedModel> ranks;
  for (std::size_t i = 0; i < results.size(); ++i) {
    const bool failed = Failed(results[i].outcome.why);
    ranks.push_back({i, failed ? kUndefined : results[i].statistics.aicc, kUndefined});
  }
  std::ranges::stable_sort(ranks, [](const RankedModel& a, const RankedModel& b) {
    return !IsUndefined(a.difference) && (IsUndefined(b.difference) || a.difference < b.difference);
  });
  const double least = ranks.front().difference;
  double sum = 0;
  for (RankedModel& one : ranks) {
    one.difference -= least;
    one.weight = std::exp(-one.difference / 2);
    if (!IsUndefined(one.weight)) sum += one.weight;
  }
  for (RankedModel& one : ranks) one.weight /= sum;
  return ranks;
}

}  // namespace

FitComparison CompareFits(std::span<const FitJob> jobs, std::span<const FitResult> results) {
  for (const FitJob& job : jobs) {
    if (job.x != jobs.front().x || job.y != jobs.front().y)
      throw Error(
          "The functions take different points by their margins or numbers of points, so that they "
          "cannot be compared.");
  }
  FitComparison comparison;
  comparison.ranks = Ranked(results);
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    for (std::size_t j = 0; j < jobs.size(); ++j) {
      if (results[i].statistics.varied >= results[j].statistics.varied ||
          !CanBeTested(results[i]) || !CanBeTested(results[j]) ||
          !IsWithin(jobs[i], results[i], jobs[j], results[j]))
        continue;
      comparison.tests.push_back(TestOf(i, j, results));
      if (HasOtherValues(jobs[i], results[i], jobs[j], results[j]))
        comparison.tests.back().probability = kUndefined;
    }
  }
  return comparison;
}

}  // namespace tarnwick
