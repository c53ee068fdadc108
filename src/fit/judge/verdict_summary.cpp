#include "fit/judge/verdict_summary.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/word_list.h"
#include "fit/judge/curve_swing.h"
#include "fit/judge/fit_findings.h"
#include "fit/judge/residual_tests.h"
#include "fit/judge/test_power.h"
#include "fit/judge/trading_groups.h"
#include "fit/judge/verdict_words.h"

namespace tarnwick {
namespace {

/// "Y is so great (3E200) that its squares cannot be summed: give it in other units"
std::string Extreme(const ExtremeData& data) {
  return std::string(1, data.axis) + " is so " + (data.greatest > 1 ? "great (" : "small (") +
         FigureText(data.greatest) + ") that its squares cannot be summed: give it in other units";
}

std::string UndefinedStart(const FitCircumstances& about) {
  const auto sentence = [](const std::vector<std::string>& names, const std::string& of_one,
                           const std::string& of_many) {
    return "The fit did not start: " + Listed(names) + (names.size() == 1 ? of_one : of_many);
  };
  if (!about.unknown_names.empty())
    return sentence(about.unknown_names,
                    " is neither the variable " + about.variable + " nor a parameter.",
                    " are neither the variable " + about.variable + " nor parameters.");
  if (!about.infinite_names.empty())
    return sentence(about.infinite_names, " has no finite value to start from.",
                    " have no finite values to start from.");
  if (about.extreme_data) return "The fit did not start: " + Extreme(*about.extreme_data) + ".";
  if (!about.first_undefined_x) {
    return "The fit did not start: the starting values are so far off that the sum of squares is "
           "beyond all numbers.";
  }
  return "The fit did not start: with the starting values the model has no value at " +
         PlacesText(*about.first_undefined_x, about.undefined_at_start) + ".";
}

/// Why a fit did nothing.
std::string Refusal(const FitResult& result, const FitCircumstances& about) {
  switch (result.outcome.why) {
    case StopReason::NothingVaried:
      return "Nothing was fitted: no parameter is set to vary.";
    case StopReason::NoPoints:
      return NoPointsText(result.points_without_error, result.undefined_points);
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

/// Why nothing found does not mean that the model is right.
std::string WhatIsUntested(const FitResult& result, TestGap gap) {
  const FitStatistics& statistics = result.statistics;
  const std::string points = Counted(statistics.points, "point");
  switch (gap) {
    case TestGap::NoDerivatives:
      return ", but the derivatives have no value at the points, so that nothing tests the model.";
    case TestGap::PatternHinted:
      return ", but the residuals hint at a pattern, which " + points + " cannot tell from chance.";
    case TestGap::PointHinted:
      return ", but one point may bend the curve, which " + points +
             " cannot tell: " + Described(result.residuals.farthest) + ".";
    case TestGap::Hidden:
      return ", but the scatter of " + points + " would hide a deviation of the model of " +
             RoughText(100 * HiddenDeviation(result)) + " % of the curve's spread.";
    default:
      return ", but " + points + " for " + Counted(statistics.varied, "parameter") + " leave " +
             Counted(OwnFreedom(statistics), "degree") +
             " of freedom: that hardly checks the model, and the errors are rough.";
  }
}

std::string MayBeAbsent(const FitResult& result) {
  std::vector<std::int32_t> which;
  for (const AbsentTerm& term : result.absent) which.push_back(term.parameter);
  return (which.size() == 1 ? ", but the term of " : ", but any one of the terms of ") +
         NamesOf(result, which) + " may be absent: the fit is hardly worse without it.";
}

/// What is to be said of the values, beginning with the colon or comma that joins it to how the fit ended.
std::string WhatTheDataSay(const FitResult& result, const FitCircumstances& about) {
  if (about.ignores_x) return ", but the model does not depend on X.";
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
           NamesOf(result, TradingGroups(result).front().parameters) + " apart.";
  }
  if (!result.unmoved.empty()) {
    return ", but the data do not depend on " + NamesOf(result, result.unmoved) + ".";
  }
  if (!Settled(result)) return ": the values are the best met so far.";
  if (!HasConverged(result))
    return ", but short of the best fit: a finishing Newton-type step improves it.";
  if (NoBetterThanMean(result))
    return ", but the curve fits hardly better than a horizontal line would.";
  if (!result.at_bound.empty())
    return ", but " + NamesOf(result, result.at_bound) +
           (result.at_bound.size() == 1 ? " stands at its bound." : " stand at their bounds.");
  if (result.statistics.degrees_of_freedom == 0)
    return result.statistics.weighting.errors == FitErrors::Absolute
               ? ": there are as many points as parameters, so nothing checks the model."
               : ": there are as many points as parameters, so no errors can be stated.";
  if (PointsLost(result)) return ", but not every point could be used.";
  if (SwingsFreely(result.swing))
    return ", but between the points the curve swings farther than any point shows.";
  if (OutrunsPoints(result.swing)) return ", but the curve swings faster than the points can show.";
  if (OnePointBends(result.residuals)) {
    return ", but one point stands out and bends the curve: " +
           Described(result.residuals.farthest) + ".";
  }
  if (Alternates(result.residuals))
    return ", but the residuals change their sign from point to point instead of scattering.";
  if (FollowsShape(result.residuals))
    return ", but the residuals follow a pattern instead of scattering.";
  if (ErrorsTooSmall(result)) return ", but the points lie farther off than their errors allow.";
  if (ScattersUnequally(result.residuals))
    return result.statistics.weighting.weights == FitWeights::None
               ? ", but some points scatter far more than others and count alike."
               : ", but some points scatter far more than others, beyond their weights.";
  if (!result.absent.empty()) return MayBeAbsent(result);
  if (!result.limits.empty())
    return ", but the points show only a limit of " + NamesOf(result, result.limits) + ".";
  if (!result.open.empty())
    return ", but the data leave the size of " + NamesOf(result, result.open) + " open.";
  if (!result.traded.empty())
    return ", but the data hardly determine " + NamesOf(result, result.traded) + ".";
  const TestGap gap = FindTestGap(result);
  if (gap != TestGap::None) return WhatIsUntested(result, gap);
  return ": the parameters are determined by the data.";
}

}  // namespace

std::string NoPointsText(std::int64_t without_error, std::int64_t undefined) {
  if (without_error > 0 && undefined == 0)
    return "Nothing was fitted: none of the points has an error above 0 to weigh it by.";
  return undefined > 0 ? "Nothing was fitted: none of the points has a finite Y."
                       : "Nothing was fitted: there is no point between the margins.";
}

std::string VerdictSummary(const FitResult& result, const FitCircumstances& about) {
  if (!Ran(result)) return Refusal(result, about);
  return HowItEnded(result, about) + WhatTheDataSay(result, about);
}

std::string JointSummary(const FitResult& whole, const FitCircumstances& about,
                         const FitShare& doubted, std::int64_t others) {
  // What speaks against one DataSet alone begins so.
  constexpr std::string_view kBut = ", but ";
  return HowItEnded(whole, about) + std::string(kBut) + "in DataSet \"" + doubted.data_set + "\"" +
         (others > 0 ? " (and " + Counted(others, "other") + ") " : " ") +
         WhatTheDataSay(*doubted.result, *doubted.about).substr(kBut.size());
}

std::string SummaryByAll(const FitShare& share) {
  return HowItEnded(*share.result, *share.about) +
         ": the parameters are determined by the data of all DataSets together.";
}

std::string NoteByAll(const FitShare& share, const FitResult& whole) {
  return "The " + Counted(share.result->statistics.points, "point") + " of DataSet \"" +
         share.data_set + "\" alone would hardly test the model; the " +
         Counted(OwnFreedom(whole.statistics), "degree") + " of freedom of all DataSets do.";
}

}  // namespace tarnwick
