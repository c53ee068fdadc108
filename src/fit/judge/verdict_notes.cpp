#include "fit/judge/verdict_notes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "base/number_text.h"
#include "base/word_list.h"
#include "fit/judge/curve_swing.h"
#include "fit/judge/fit_findings.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/residual_tests.h"
#include "fit/judge/trading_groups.h"
#include "fit/judge/verdict_words.h"

namespace tarnwick {
namespace {

constexpr int kShareDigits = 3;
// From here on a share in percent says less and less.
constexpr double kMostPercent = 0.99;
// A finishing run that moves the parameters by less than this is not worth a word.
constexpr double kDistanceWorthNaming = 0.01;
constexpr std::size_t kCorrelationsNamed = 3;
constexpr std::size_t kOutliersNamed = 3;
// From here on chance does it more often than not.
constexpr double kMostChance = 0.5;

void NoteUndetermined(const FitResult& result, std::vector<std::string>& notes) {
  for (const TradingGroup& group : TradingGroups(result)) {
    notes.push_back(
        NamesOf(result, group.parameters) + " trade against each other: the data determine " +
        (group.directions == 1
             ? "only a combination of them, so that one should be held fixed."
             : "only combinations of them, so that " + std::to_string(group.directions) +
                   " of them should be held fixed."));
  }
  if (!result.unmoved.empty()) {
    notes.push_back(NamesOf(result, result.unmoved) +
                    " never moved the curve: the sum of squares does not depend on " +
                    (result.unmoved.size() == 1 ? "it" : "them") +
                    " here, so that the starting values may be far off.");
  }
}

/// True for a parameter of a term that may be absent, which says all that is wrong with it.
bool IsOfAbsentTerm(const FitResult& result, std::int32_t parameter) {
  return std::ranges::any_of(result.absent, [&](const AbsentTerm& term) {
    return term.parameter == parameter || std::ranges::count(term.through, parameter) > 0;
  });
}

std::vector<std::int32_t> OfPresentTerms(const FitResult& result,
                                         std::vector<std::int32_t> parameters) {
  std::erase_if(parameters, [&](std::int32_t i) { return IsOfAbsentTerm(result, i); });
  return parameters;
}

void NoteHardlyDetermined(const FitResult& result, std::vector<std::string>& notes) {
  const std::vector<std::int32_t> traded = OfPresentTerms(result, result.traded);
  if (traded.empty()) return;
  notes.push_back(NamesOf(result, traded) +
                  (traded.size() == 1
                       ? " has an error of more than half its value, and another parameter makes "
                         "up for it: hold one of them fixed, or take a simpler model."
                       : " have errors of more than half their values, and other parameters make "
                         "up for them: hold some fixed, or take a simpler model."));
}

void NoteBounds(const FitResult& result, std::vector<std::string>& notes) {
  for (const std::int32_t i : result.at_bound) {
    const auto at = static_cast<std::size_t>(i);
    notes.push_back(result.names.at(at) + " stands at its bound " +
                    FigureText(result.values.at(at)) +
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
  notes.push_back(NamesOf(result, stuck) + " kept " +
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
      const bool explained = IsOfAbsentTerm(result, static_cast<std::int32_t>(i)) &&
                             IsOfAbsentTerm(result, static_cast<std::int32_t>(j));
      if (std::abs(value) > kStrongCorrelation && !explained) pairs.push_back({i, j, value});
    }
  }
  std::stable_sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
    return std::abs(a.correlation) > std::abs(b.correlation);
  });
  for (std::size_t i = 0; i < std::min(pairs.size(), kCorrelationsNamed); ++i) {
    notes.push_back(result.names[pairs[i].first] + " and " + result.names[pairs[i].second] +
                    " are strongly correlated (" + FigureText(pairs[i].correlation) +
                    "): an error of one is made up for by the other.");
  }
  if (pairs.size() > kCorrelationsNamed) {
    notes.push_back(
        Counted(static_cast<std::int64_t>(pairs.size() - kCorrelationsNamed), "more pair") +
        " of parameters with strong correlation.");
  }
}

void NoteOpen(const FitResult& result, std::vector<std::string>& notes) {
  const std::vector<std::int32_t> open = OfPresentTerms(result, result.open);
  if (open.empty()) return;
  notes.push_back("The curve hardly changes when " + NamesOf(result, open) +
                  (open.size() == 1
                       ? " goes as far as its error reaches, so that the error says little: hold "
                         "it fixed, or take a simpler model."
                       : " go as far as their errors reach, so that the errors say little: hold "
                         "some fixed, or take a simpler model."));
}

void NoteLimits(const FitResult& result, std::vector<std::string>& notes) {
  if (result.limits.empty()) return;
  const bool one = result.limits.size() == 1;
  notes.push_back("As far from " + NamesOf(result, result.limits) + " as " +
                  (one ? "its error reaches" : "their errors reach") +
                  " the curve is another one or has no value, so that " +
                  (one ? "the error says" : "the errors say") +
                  " nothing: the points show only that the curve goes to a limit, as one does that "
                  "is faster than they lie. Hold " +
                  (one ? "it" : "them") + " fixed, or take a simpler model.");
}

/// "e = 0.3 ± 0.2 may be 0, and f and g, which act through it alone, then mean nothing: …"
void NoteAbsent(const FitResult& result, std::vector<std::string>& notes) {
  for (const AbsentTerm& term : result.absent) {
    const auto at = static_cast<std::size_t>(term.parameter);
    const bool one = term.through.size() == 1;
    const std::string of_chance = term.chance < kMostChance
                                      ? " in up to " + RoughText(100 * term.chance) + " of 100 fits"
                                      : std::string(" in most fits");
    notes.push_back(
        result.names.at(at) + " = " + RoughText(result.values.at(at)) + " ± " +
        RoughText(result.statistics.standard_errors.at(at)) + " may be 0, and " +
        NamesOf(result, term.through) + (one ? ", which acts" : ", which act") +
        " through it alone, then " + (one ? "means" : "mean") + " nothing: do not trust " +
        (one ? "its error" : "their errors") + ". Without the term the sum of squares rises by " +
        GeneralText(100 * term.gain, kShareDigits) + " %; a term that is not there gains as much" +
        of_chance + ". Leave it out, or hold " + NamesOf(result, term.through) +
        " where theory has " + (one ? "it." : "them."));
  }
}

/// "phi = 307.1 and -0.7309 give the same curve: they are 49 turns of 6.283 apart."
void NoteEqualValues(const FitResult& result, std::vector<std::string>& notes) {
  for (const EqualValue& one : result.equal) {
    const auto at = static_cast<std::size_t>(one.parameter);
    const double value = result.values.at(at);
    std::string note = result.names.at(at) + " = " + FigureText(value) + " and " +
                       FigureText(one.value) + " give the same curve: ";
    if (one.turn > 0) {
      const double turns = std::round(std::abs(value - one.value) / one.turn);
      note += "they are " + Counted(static_cast<std::int64_t>(turns), "turn") + " of " +
              FigureText(one.turn) + " apart.";
    } else {
      note += "its sign has no meaning.";
    }
    notes.push_back(std::move(note));
  }
}

/// "A = 0.9949, f = 0.06999 and p = 3.128 give the same curve: …"
void NoteEqualSets(const FitResult& result, std::vector<std::string>& notes) {
  for (const EqualSet& set : result.equal_sets) {
    std::vector<std::string> values;
    for (const EqualSet::Member& one : set.members)
      values.push_back(result.names.at(static_cast<std::size_t>(one.parameter)) + " = " +
                       FigureText(one.value));
    notes.push_back(Listed(values) + " give the same curve: their signs make up for each other.");
  }
}

/// Of a robust loss.
void NoteOutliers(const FitCircumstances& about, std::vector<std::string>& notes) {
  const std::size_t count = about.hardly_counted.size();
  if (count == 0) return;
  std::vector<std::string> places;
  for (std::size_t i = 0; i < std::min(count, kOutliersNamed); ++i)
    places.push_back(FigureText(about.hardly_counted[i]));
  notes.push_back(Counted(static_cast<std::int64_t>(count), "point") +
                  (count == 1 ? " counts" : " count") + " for less than a tenth under the loss: " +
                  (count > kOutliersNamed ? "the farthest at X = " : "X = ") + Listed(places) +
                  ".");
}

void NoteSwing(const FitResult& result, std::vector<std::string>& notes) {
  if (!SwingsFreely(result.swing)) return;
  notes.push_back("Between X = " + FigureText(result.swing.from) + " and " +
                  FigureText(result.swing.to) +
                  " no point holds the curve: a period of less than two points, or a width of less "
                  "than one, fits much that was never measured. Start nearer to what is expected.");
}

void NoteTurns(const FitResult& result, std::vector<std::string>& notes) {
  if (!OutrunsPoints(result.swing)) return;
  notes.push_back("From one point to the next the curve turns " + RoughText(result.swing.turns) +
                  " times: a period of less than two points, where one of more goes through the "
                  "same points. Start with a longer one, or measure at shorter distances.");
}

void NotePattern(const FitResult& result, std::vector<std::string>& notes) {
  const ResidualFindings& found = result.residuals;
  if (OnePointStandsOut(found)) {
    std::string moved = ". It hardly moves the parameters.";
    if (!std::isfinite(found.farthest.pull)) {
      moved = ". Without it the curve goes through all points: check it, or fit without it.";
    } else if (OnePointBends(found)) {
      moved = ". It alone moves the parameters by " + RoughText(found.farthest.pull) +
              " of their errors: check it, or fit without it.";
    }
    notes.push_back("One point stands out: " + Described(found.farthest) + moved);
  }
  // A wave from point to point, which is no shape along X.
  if (FollowsShape(found) && !Alternates(found)) {
    std::string note =
        "The residuals follow a pattern along X: the model leaves something out, or other starting "
        "values lead to a better fit. ";
    note += ErrorsTooGreat(result)
                ? "The errors of the points, which are stated too great, hide it from χ²."
                : "The errors stated are too small.";
    notes.push_back(std::move(note));
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
  const std::string ends = "from " + FigureText(value) + " to " + FigureText(best);
  if (FigureText(value) == FigureText(best)) return "by " + percent;
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
  if (about.has_x_errors) notes.emplace_back("The errors of X do not count.");
  if (about.no_counts > 0) {
    notes.push_back(Counted(about.no_counts, "value") +
                    " of Y below 0 or no whole number: weights as counts are for counts.");
  }
  if (ErrorsTooSmall(result)) {
    notes.push_back("χ² is " + FigureText(statistics.sum_of_squares) + " for " +
                    Counted(statistics.degrees_of_freedom, "degree") +
                    " of freedom, which chance alone makes of a fit in less than one of a "
                    "thousand: the model leaves something out, or the errors of the points are "
                    "stated too small.");
  }
  if (ErrorsTooGreat(result)) {
    notes.push_back("χ² is " + FigureText(statistics.sum_of_squares) + " for " +
                    Counted(statistics.degrees_of_freedom, "degree") +
                    " of freedom, less than chance leaves: the errors of the points are stated "
                    "too great, and with them those of the parameters.");
  }
}

void NotePoints(const FitResult& result, const FitCircumstances& about,
                std::vector<std::string>& notes) {
  if (!about.some_rows.empty())
    notes.push_back("Fitted is a part of the source: " + about.some_rows + ".");
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

/// What should have evened the scatter, or what would.
const char* HowTheyCount(FitWeights weights) {
  switch (weights) {
    case FitWeights::Errors:
      return "their errors of Y allow: look at the errors.";
    case FitWeights::Counts:
      return "the roots of counts allow: weigh by errors, relative to the value or not at all.";
    case FitWeights::Relative:
      return "weights relative to the value allow: weigh by errors, as counts or not at all.";
    default:
      return "others, though all count alike: weights would make more of the data.";
  }
}

/// Errors of the parameters that come from points of unequal worth.
void NoteScatter(const FitResult& result, std::vector<std::string>& notes) {
  if (result.residuals.unequal_scatter <= 1) return;
  const bool alike = result.statistics.weighting.weights == FitWeights::None;
  notes.push_back("Some points scatter " + RoughText(result.residuals.unequal_scatter) +
                  " times more than " + (alike ? "" : "others, beyond what ") +
                  HowTheyCount(result.statistics.weighting.weights));
}

}  // namespace

std::vector<std::string> VerdictNotes(const FitResult& result, const FitCircumstances& about) {
  std::vector<std::string> notes = about.expression_warnings;
  if (about.ignores_x) {
    notes.insert(notes.begin(), "The formula has no " + about.variable +
                                    ", which stands for X: its curve is the same everywhere.");
  } else if (Ran(result)) {
    NoteUndetermined(result, notes);
    NoteBounds(result, notes);
    NoteStuck(result, notes);
    NoteSwing(result, notes);
    NoteTurns(result, notes);
    NoteAbsent(result, notes);
    NoteLimits(result, notes);
    NoteOpen(result, notes);
    NoteHardlyDetermined(result, notes);
    NoteSearch(result, notes);
    NoteFinishingStep(result, notes);
    NotePattern(result, notes);
    NoteWeights(result, about, notes);
    NoteScatter(result, notes);
    NoteOutliers(about, notes);
    NoteEqualValues(result, notes);
    NoteEqualSets(result, notes);
    NoteCorrelations(result, notes);
  }
  NotePoints(result, about, notes);
  return notes;
}

}  // namespace tarnwick
