#include "fit/judge/fit_verdict.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/number_text.h"
#include "base/undefined.h"
#include "fit/judge/curve_swing.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/residual_tests.h"
#include "fit/judge/trading_groups.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 6;
constexpr int kShareDigits = 3;
// From here on a share in percent says less and less.
constexpr double kMostPercent = 0.99;
// Nearer to the best fit than this many standard errors, a difference means nothing.
constexpr double kNearEnough = 0.1;
// A gain in the sum of squares below this share is the rounding of its last digits.
constexpr double kGainWorthNaming = 1e-9;
// A finishing run that moves the parameters by less than this is not worth a word.
constexpr double kDistanceWorthNaming = 0.01;
constexpr std::size_t kCorrelationsNamed = 3;
// A chi squared that chance leads to more rarely speaks against the model or its errors.
constexpr double kRareChance = 0.001;
// With fewer degrees of freedom the points hardly show whether the model is theirs.
constexpr std::int64_t kFewestFree = 3;
constexpr int kRoughDigits = 2;

std::string Number(double value) {
  return GeneralText(value, kDigits);
}

/// "a", "a and b", "a, b and c".
std::string Listed(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) text += i + 1 == words.size() ? " and " : ", ";
    text += words[i];
  }
  return text;
}

std::vector<std::string> NamesOf(const FitResult& result, const std::vector<std::int32_t>& which) {
  std::vector<std::string> names;
  names.reserve(which.size());
  for (const std::int32_t i : which) names.push_back(result.names.at(static_cast<std::size_t>(i)));
  return names;
}

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

bool TooFewPoints(const FitResult& result) {
  return result.statistics.points < result.statistics.varied;
}

bool NoBetterThanMean(const FitResult& result) {
  return NoBetterThanMean(result.statistics);
}

bool ErrorsTooSmall(const FitResult& result) {
  return result.statistics.chi_squared_probability < kRareChance;
}

bool PointsLost(const FitResult& result) {
  return result.undefined_points + result.points_without_error + result.points_without_weight > 0;
}

bool AllDetermined(const FitResult& result) {
  return result.singular_directions.empty() && result.unmoved.empty() && result.open.empty() &&
         result.traded.empty() && result.at_bound.empty();
}

/// Nothing that the points show speaks against the model.
bool ModelHolds(const FitResult& result) {
  return !NoBetterThanMean(result) && !FollowsShape(result.residuals) &&
         !Alternates(result.residuals) && !OnePointBends(result.residuals) &&
         !ScattersUnequally(result.residuals) && !SwingsFreely(result.swing) &&
         !ErrorsTooSmall(result);
}

/// Enough points beyond the parameters that their scatter says something; known errors make up for them.
bool CanBeChecked(const FitResult& result) {
  const bool known = result.statistics.weighting.errors == FitErrors::Absolute;
  return result.statistics.degrees_of_freedom >= (known ? 1 : kFewestFree);
}

/// "X = 57, 12 standard deviations"
std::string Outstanding(const OutstandingPoint& point) {
  return "X = " + Number(point.x) + ", " +
         (std::isfinite(point.deviations)
              ? GeneralText(point.deviations, kRoughDigits) + " standard deviations"
              : "beyond all others");
}

// --- the summary

/// "Y is so great (3E200) that its squares cannot be summed: give it in other units"
std::string Extreme(const ExtremeData& data) {
  return std::string(1, data.axis) + " is so " + (data.greatest > 1 ? "great (" : "small (") +
         Number(data.greatest) + ") that its squares cannot be summed: give it in other units";
}

std::string UndefinedStart(const FitCircumstances& about) {
  const auto sentence = [](const std::vector<std::string>& names, const char* of_one,
                           const char* of_many) {
    return "The fit did not start: " + Listed(names) + (names.size() == 1 ? of_one : of_many);
  };
  if (!about.unknown_names.empty())
    return sentence(about.unknown_names, " is neither the variable nor a parameter.",
                    " are neither the variable nor parameters.");
  if (!about.infinite_names.empty())
    return sentence(about.infinite_names, " has no finite value to start from.",
                    " have no finite values to start from.");
  if (about.extreme_data) return "The fit did not start: " + Extreme(*about.extreme_data) + ".";
  if (!about.first_undefined_x) {
    return "The fit did not start: the starting values are so far off that the sum of squares is "
           "beyond all numbers.";
  }
  std::string text =
      "The fit did not start: with the starting values the model has no value at "
      "X = " +
      Number(*about.first_undefined_x);
  const std::int64_t others = about.undefined_at_start - 1;
  if (others > 0) text += " and at " + Counted(others, "other point");
  return text + ".";
}

/// Why a fit did nothing.
std::string Refusal(const FitResult& result, const FitCircumstances& about) {
  switch (result.outcome.why) {
    case StopReason::NothingVaried:
      return "Nothing was fitted: no parameter is set to vary.";
    case StopReason::NoPoints:
      if (result.points_without_error > 0 && result.undefined_points == 0)
        return "Nothing was fitted: none of the points has an error above 0 to weigh it by.";
      return result.undefined_points > 0
                 ? "Nothing was fitted: none of the points has a finite Y."
                 : "Nothing was fitted: there is no point between the margins.";
    case StopReason::UndefinedAtStart:
      return UndefinedStart(about);
    default:
      return result.outcome.message;
  }
}

std::string Limit(const FitCircumstances& about) {
  return about.method == FitProcType::cfp_Simplex
             ? Counted(about.max_iterations, "evaluation") + " a parameter"
             : Counted(about.max_iterations, "iteration");
}

std::string HowItEnded(const FitResult& result, const FitCircumstances& about) {
  const std::string iterations = Counted(result.outcome.iterations, "iteration");
  switch (result.outcome.why) {
    case StopReason::IterationLimit:
      return "Stopped at the limit of " + Limit(about) + " before the fit had settled";
    case StopReason::Cancelled:
      return "Cancelled after " + iterations;
    case StopReason::NoFurtherDescent:
      return HasConverged(result)
                 ? "Settled after " + iterations + " where no step improves the fit any more"
                 : "Stopped after " + iterations + " where this method finds nothing better";
    default:
      return "Converged after " + iterations;
  }
}

/// What is to be said of the values, beginning with the colon or comma that joins it to how the fit ended.
std::string WhatTheDataSay(const FitResult& result, const FitCircumstances& about) {
  if (about.extreme_data) return ", but " + Extreme(*about.extreme_data) + ".";
  if (TooFewPoints(result)) {
    return ", but " + Counted(result.statistics.points, "point") + " cannot determine " +
           Counted(result.statistics.varied, "parameter") + ".";
  }
  if (result.outcome.why == StopReason::IterationLimit) {
    return ": raise the limit, or fit again from these values, the best met so far.";
  }
  if (!result.singular_directions.empty()) {
    return ", but the data cannot tell " +
           Listed(NamesOf(result, TradingGroups(result).front().parameters)) + " apart.";
  }
  if (!result.unmoved.empty()) {
    return ", but the data do not depend on " + Listed(NamesOf(result, result.unmoved)) + ".";
  }
  if (!Settled(result)) return ": the values are the best met so far.";
  if (DistanceToBestFit(result) > kNearEnough)
    return ", but short of the best fit: a finishing Newton-type step improves it.";
  if (NoBetterThanMean(result))
    return ", but the curve fits hardly better than a horizontal line would.";
  if (!result.at_bound.empty())
    return ", but " + Listed(NamesOf(result, result.at_bound)) +
           (result.at_bound.size() == 1 ? " stands at its bound." : " stand at their bounds.");
  if (result.statistics.degrees_of_freedom == 0)
    return result.statistics.weighting.errors == FitErrors::Absolute
               ? ": there are as many points as parameters, so nothing checks the model."
               : ": there are as many points as parameters, so no errors can be stated.";
  if (PointsLost(result)) return ", but not every point could be used.";
  if (SwingsFreely(result.swing))
    return ", but between the points the curve swings farther than any point shows.";
  if (OnePointBends(result.residuals)) {
    return ", but one point stands out and bends the curve: " +
           Outstanding(*result.residuals.outstanding) + ".";
  }
  if (FollowsShape(result.residuals))
    return ", but the residuals follow a pattern instead of scattering.";
  if (Alternates(result.residuals))
    return ", but the residuals change their sign from point to point instead of scattering.";
  if (ErrorsTooSmall(result)) return ", but the points lie farther off than their errors allow.";
  if (ScattersUnequally(result.residuals))
    return ", but some points scatter far more than others and count alike.";
  if (!result.open.empty())
    return ", but the data leave the size of " + Listed(NamesOf(result, result.open)) + " open.";
  if (!result.traded.empty())
    return ", but the data hardly determine " + Listed(NamesOf(result, result.traded)) + ".";
  if (!CanBeChecked(result)) {
    return ", but " + Counted(result.statistics.points, "point") + " for " +
           Counted(result.statistics.varied, "parameter") + " leave " +
           Counted(result.statistics.degrees_of_freedom, "degree") +
           " of freedom: that hardly checks the model, and the errors are rough.";
  }
  return ": the parameters are determined by the data.";
}

// --- the notes

void NoteUndetermined(const FitResult& result, std::vector<std::string>& notes) {
  for (const TradingGroup& group : TradingGroups(result)) {
    notes.push_back(Listed(NamesOf(result, group.parameters)) +
                    " trade against each other: the data determine " +
                    (group.directions == 1
                         ? "only a combination of them, so that one should be held fixed."
                         : "only combinations of them, so that " +
                               std::to_string(group.directions) +
                               " of them should be held fixed."));
  }
  if (!result.unmoved.empty()) {
    notes.push_back(Listed(NamesOf(result, result.unmoved)) +
                    " never moved the curve: the sum of squares does not depend on " +
                    (result.unmoved.size() == 1 ? "it" : "them") +
                    " here, so that the starting values may be far off.");
  }
}

void NoteHardlyDetermined(const FitResult& result, std::vector<std::string>& notes) {
  if (result.traded.empty()) return;
  notes.push_back(Listed(NamesOf(result, result.traded)) +
                  (result.traded.size() == 1
                       ? " has an error greater than its value, and another parameter makes up "
                         "for it: hold one of them fixed, or take a simpler model."
                       : " have errors greater than their values, and other parameters make up "
                         "for them: hold some fixed, or take a simpler model."));
}

void NoteBounds(const FitResult& result, std::vector<std::string>& notes) {
  for (const std::int32_t i : result.at_bound) {
    const auto at = static_cast<std::size_t>(i);
    notes.push_back(result.names.at(at) + " stands at its bound " + Number(result.values.at(at)) +
                    ": it has no error of its own, and the others' are told as if it were held "
                    "there.");
  }
}

/// Parameters that kept their starting value to the last bit while others moved.
void NoteStuck(const FitResult& result, std::vector<std::string>& notes) {
  if (!result.outcome.changed || result.start.size() != result.values.size()) return;
  std::vector<std::int32_t> stuck;
  for (std::size_t i = 0; i < result.values.size(); ++i) {
    const auto index = static_cast<std::int32_t>(i);
    const bool unmoved =
        std::find(result.unmoved.begin(), result.unmoved.end(), index) != result.unmoved.end();
    const bool at_bound = std::ranges::find(result.at_bound, index) != result.at_bound.end();
    if (!unmoved && !at_bound && result.values[i] == result.start[i]) stuck.push_back(index);
  }
  if (stuck.empty()) return;
  notes.push_back(Listed(NamesOf(result, stuck)) + " kept " +
                  (stuck.size() == 1 ? "its starting value." : "their starting values."));
}

void NoteCorrelations(const FitResult& result, std::vector<std::string>& notes) {
  struct Pair {
    std::size_t first, second;
    double correlation;
  };
  std::vector<Pair> pairs;
  const std::size_t k = result.names.size();
  const std::vector<double>& correlation = result.statistics.correlation;
  for (std::size_t i = 0; correlation.size() == k * k && i < k; ++i) {
    for (std::size_t j = i + 1; j < k; ++j) {
      const double value = correlation[i * k + j];
      if (std::abs(value) > kStrongCorrelation) pairs.push_back({i, j, value});
    }
  }
  std::stable_sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
    return std::abs(a.correlation) > std::abs(b.correlation);
  });
  for (std::size_t i = 0; i < std::min(pairs.size(), kCorrelationsNamed); ++i) {
    notes.push_back(result.names[pairs[i].first] + " and " + result.names[pairs[i].second] +
                    " are strongly correlated (" + Number(pairs[i].correlation) +
                    "): an error of one is made up for by the other.");
  }
  if (pairs.size() > kCorrelationsNamed) {
    notes.push_back(
        Counted(static_cast<std::int64_t>(pairs.size() - kCorrelationsNamed), "more pair") +
        " of parameters with strong correlation.");
  }
}

void NoteOpen(const FitResult& result, std::vector<std::string>& notes) {
  if (result.open.empty()) return;
  notes.push_back("The curve hardly changes when " + Listed(NamesOf(result, result.open)) +
                  (result.open.size() == 1
                       ? " goes as far as its error reaches, so that the error says little: hold "
                         "it fixed, or take a simpler model."
                       : " go as far as their errors reach, so that the errors say little: hold "
                         "some fixed, or take a simpler model."));
}

void NoteSwing(const FitResult& result, std::vector<std::string>& notes) {
  if (!SwingsFreely(result.swing)) return;
  notes.push_back("Between X = " + Number(result.swing.from) + " and " + Number(result.swing.to) +
                  " no point holds the curve: a period of less than two points, or a width of less "
                  "than one, fits much that was never measured. Start nearer to what is expected.");
}

void NotePattern(const FitResult& result, std::vector<std::string>& notes) {
  const ResidualFindings& found = result.residuals;
  if (found.outstanding) {
    const std::string moved = GeneralText(found.outstanding->pull, kRoughDigits);
    notes.push_back("One point stands out: " + Outstanding(*found.outstanding) +
                    (OnePointBends(found) ? ". It alone moves the parameters by " + moved +
                                                " of their errors: check it, or fit without it."
                                          : ". It hardly moves the parameters."));
  }
  if (FollowsShape(found)) {
    notes.emplace_back(
        "The residuals follow a pattern along X: the model leaves something out, or other starting "
        "values lead to a better fit. The errors stated are too small.");
  } else if (Alternates(found)) {
    notes.emplace_back(
        "A residual above zero is followed by one below it far more often than chance has it: the "
        "points may come from two sources by turns, or swing faster than the model.");
  }
}

/// By how much `best` lies below `value`: "from 2 to 1.5 (by 25 %)", "from 2 to 1E-6, 2E6 times less".
std::string Lowering(double value, double best) {
  const double share = (value - best) / value;
  const std::string percent = GeneralText(100 * share, kShareDigits) + " %";
  const std::string ends = "from " + Number(value) + " to " + Number(best);
  if (Number(value) == Number(best)) return "by " + percent;
  if (share < kMostPercent) return ends + " (by " + percent + ")";
  return best > 0 ? ends + ", " + GeneralText(value / best, kShareDigits) + " times less" : ends;
}

/// That the values come from other starting values than those given, or that others were tried.
void NoteSearch(const FitResult& result, std::vector<std::string>& notes) {
  if (result.outcome.left_minimum) {
    notes.push_back(
        "The starting values led into a poorer minimum; others, found by a search, lower the sum "
        "of squares " +
        Lowering(result.outcome.left_minimum->value, result.outcome.left_minimum->lower) + ".");
  } else if (result.outcome.search_evaluations > 0) {
    notes.emplace_back("A search for better starting values found none.");
  }
}

void NoteFinishingStep(const FitResult& result, std::vector<std::string>& notes) {
  if (DistanceToBestFit(result) < kDistanceWorthNaming) return;
  notes.push_back("A finishing Newton-type step lowers the sum of squares " +
                  Lowering(result.outcome.value, *result.newton_sum_of_squares) + ".");
}

void NoteWeights(const FitResult& result, const FitCircumstances& about,
                 std::vector<std::string>& notes) {
  const FitStatistics& statistics = result.statistics;
  if (about.weighted_unasked)
    notes.emplace_back("The points are weighted by their errors of Y, since they have some.");
  if (ErrorsTooSmall(result)) {
    notes.push_back("χ² is " + Number(statistics.sum_of_squares) + " for " +
                    Counted(statistics.degrees_of_freedom, "degree") +
                    " of freedom, which chance alone makes of a fit in less than one of a "
                    "thousand: the model leaves something out, or the errors of the points are "
                    "stated too small.");
  }
  if (statistics.chi_squared_probability > 1 - kRareChance) {
    notes.push_back("χ² is " + Number(statistics.sum_of_squares) + " for " +
                    Counted(statistics.degrees_of_freedom, "degree") +
                    " of freedom, less than chance leaves: the errors of the points are stated "
                    "too great, and with them those of the parameters.");
  }
}

void NotePoints(const FitResult& result, const FitCircumstances& about,
                std::vector<std::string>& notes) {
  if (about.regression_curve) {
    notes.emplace_back(
        "The points of the regression curve were fitted, as long as the DataSet shows one.");
  }
  if (result.undefined_points > 0) {
    notes.push_back(Counted(result.undefined_points, "point") +
                    " left out: Y or the model has no value there.");
  }
  if (result.points_without_error > 0) {
    notes.push_back(Counted(result.points_without_error, "point") +
                    " left out: without an error above 0 nothing tells the weight.");
  }
  if (result.points_without_weight > 0) {
    notes.push_back(Counted(result.points_without_weight, "point") +
                    " weighed nothing: the model's value gives no weight there.");
  }
  if (result.points_used < result.points_in_range) {
    notes.push_back(std::to_string(result.points_used) + " of " +
                    std::to_string(result.points_in_range) +
                    " points used: the model thins them by its number of points (" +
                    std::to_string(about.thinned_to) + "). All points can be asked for.");
  }
}

/// The sign that was meant to stay is squared away.
void NoteSignBeforePower(const FitCircumstances& about, FitVerdict& verdict) {
  if (!about.sign_warning.empty()) verdict.notes.push_back(about.sign_warning);
}

/// Errors of the parameters that come from points of unequal worth.
void NoteScatter(const FitResult& result, std::vector<std::string>& notes) {
  if (result.residuals.unequal_scatter <= 1) return;
  notes.push_back("Some points scatter " +
                  GeneralText(result.residuals.unequal_scatter, kRoughDigits) +
                  " times more than others, though all count alike: weights would make more of "
                  "the data.");
}

}  // namespace

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

FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances) {
  FitVerdict verdict;
  if (!Ran(result)) {
    verdict.summary = Refusal(result, circumstances);
    NoteSignBeforePower(circumstances, verdict);
    NotePoints(result, circumstances, verdict.notes);
    return verdict;
  }
  verdict.trustworthy = HasConverged(result) && !circumstances.extreme_data &&
                        AllDetermined(result) && ModelHolds(result) && CanBeChecked(result) &&
                        !PointsLost(result);
  verdict.summary = HowItEnded(result, circumstances) + WhatTheDataSay(result, circumstances);
  NoteSignBeforePower(circumstances, verdict);
  NoteUndetermined(result, verdict.notes);
  NoteBounds(result, verdict.notes);
  NoteStuck(result, verdict.notes);
  NoteSwing(result, verdict.notes);
  NoteOpen(result, verdict.notes);
  NoteHardlyDetermined(result, verdict.notes);
  NoteSearch(result, verdict.notes);
  NoteFinishingStep(result, verdict.notes);
  NotePattern(result, verdict.notes);
  NoteWeights(result, circumstances, verdict.notes);
  NoteScatter(result, verdict.notes);
  NoteCorrelations(result, verdict.notes);
  NotePoints(result, circumstances, verdict.notes);
  return verdict;
}

}  // namespace tarnwick
