#include "fit/judge/fit_verdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "base/undefined.h"
#include "good_fit.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;

FitCircumstances Usual() {
  FitCircumstances about;
  about.max_iterations = 200;
  about.thinned_to = 150;
  return about;
}

struct Situation {
  const char* name;
  std::function<void(FitResult&, FitCircumstances&)> make;
  bool trustworthy;
  std::string summary;  ///< behind "Converged after 9 iterations" where it begins with : or ,
  std::string note;     ///< a part of one of the notes; empty: there are no notes
};

using R = FitResult;
using C = FitCircumstances;

const char* const kDetermined = ": the parameters are determined by the data.";

const char* const kShort = ", but short of the best fit: a finishing Newton-type step improves it.";

// What running fits show stands among the cases of the batch program.
const Situation kSituations[] = {
    {"good", [](R&, C&) {}, true, kDetermined, ""},
    {"one iteration", [](R& r, C&) { r.outcome.iterations = 1; }, true,
     "Converged after 1 iteration: the parameters are determined by the data.", ""},
    {"no descent", [](R& r, C&) { r.outcome.why = StopReason::NoFurtherDescent; }, true,
     "Settled after 9 iterations where no step improves the fit any more: the parameters are "
     "determined by the data.",
     ""},
    {"limit", [](R& r, C&) { r.outcome.why = StopReason::IterationLimit; }, false,
     "Stopped at the limit of 200 iterations before the fit had settled: raise the limit, or fit "
     "again from these values, the best met so far.",
     ""},
    {"limit of the simplex",
     [](R& r, C& c) {
       r.outcome.why = StopReason::IterationLimit;
       c.method = FitProcType::cfp_Simplex;
     },
     false,
     "Stopped at the limit of 200 evaluations a parameter before the fit had settled: raise the "
     "limit, or fit again from these values, the best met so far.",
     ""},
    {"cancelled", [](R& r, C&) { r.outcome.why = StopReason::Cancelled; }, false,
     "Cancelled after 9 iterations: the values are the best met so far.", ""},
    {"two trade",
     [](R& r, C&) {
       r.singular_directions = {{1e-17, {2, 0}}};
     },
     false, ", but the data cannot tell c and a apart.", "c and a trade against each other"},
    {"three trade",
     [](R& r, C&) {
       r.singular_directions = {{1e-17, {2, 0, 1}}};
     },
     false, ", but the data cannot tell c, a and b apart.",
     "c, a and b trade against each other: the data determine only a combination"},
    {"two directions through one parameter",
     [](R& r, C&) {
       r.singular_directions = {{1e-16, {1, 2}}, {1e-17, {1, 0}}};
     },
     false, ", but the data cannot tell a, b and c apart.",
     "a, b and c trade against each other: the data determine only combinations of them, so that 2 "
     "of them should be held fixed."},
    {"unmoved", [](R& r, C&) { r.unmoved = {1}; }, false, ", but the data do not depend on b.",
     "b never moved the curve"},
    {"stuck", [](R& r, C&) { r.values[0] = 1; }, true, kDetermined, "a kept its starting value."},
    {"as many points",
     [](R& r, C&) {
       r.statistics.points = 3;
       r.statistics.degrees_of_freedom = 0;
     },
     false, ": there are as many points as parameters, so no errors can be stated.", ""},
    {"flat", [](R& r, C&) { r.statistics.r_squared = -1e-9; }, false,
     ", but the curve fits hardly better than a horizontal line would.", ""},
    {"correlated", [](R& r, C&) { r.statistics.correlation[5] = -0.9975; }, true, kDetermined,
     "b and c are strongly correlated (-0.9975)"},
    {"pattern", [](R& r, C&) { r.residuals.shape = 1e-4; }, false,
     ", but the residuals follow a pattern instead of scattering.",
     "The residuals follow a pattern along X"},
    {"hardly better than a constant", [](R& r, C&) { r.statistics.r_squared = 0.04; }, false,
     ", but the curve fits hardly better than a horizontal line would.", ""},
    {"a constant",
     [](R& r, C&) {
       r.statistics.r_squared = -1e-14;
       r.statistics.varied = 1;
     },
     true, kDetermined, ""},
    {"squares of Y lost",
     [](R&, C& c) {
       c.extreme_data = {'Y', 3e-200};
     },
     false,
     ", but Y is so small (3E-200) that its squares cannot be summed: give it in other units.", ""},
    {"squares of Y overflow",
     [](R& r, C& c) {
       r.outcome.why = StopReason::UndefinedAtStart;
       c.extreme_data = {'Y', 3e200};
     },
     false,
     "The fit did not start: Y is so great (3E200) that its squares cannot be summed: give it in "
     "other units.",
     ""},
    {"hardly determined",
     [](R& r, C&) {
       r.traded = {0, 1};
     },
     false, ", but the data hardly determine a and b.",
     "a and b have errors of more than half their values"},
    {"a size left open", [](R& r, C&) { r.open = {1}; }, false,
     ", but the data leave the size of b open.", "The curve hardly changes when b goes as far"},
    {"a term that may be absent",
     [](R& r, C&) {
       r.values = {0.3, 3, 4};
       r.statistics.standard_errors = {0.2, 1, 1};
       r.absent = {{0, {1, 2}, 0.04, 0.35}};
     },
     false, ", but the term of a may be absent: the fit is hardly worse without it.",
     "a = 0.3 ± 0.2 may be 0, and b and c, which act through it alone, then mean nothing: do not "
     "trust their errors. Without the term the sum of squares rises by 4 %; a term that is not "
     "there gains as much in up to 35 of 100 fits."},
    {"a phase turns away",
     [](R& r, C&) {
       r.values[1] = 307.145;
       r.equal = {{1, -0.730898, 2 * std::numbers::pi}};
     },
     true, kDetermined,
     "b = 307.145 and -0.730898 give the same curve: they are 49 turns of 6.28319 apart."},
    {"a width below 0",
     [](R& r, C&) {
       r.values[2] = -0.75;
       r.equal = {{2, 0.75, 0}};
     },
     true, kDetermined, "c = -0.75 and 0.75 give the same curve: its sign has no meaning."},
    {"signs that make up for each other",
     [](R& r, C&) {
       r.equal_sets = {{{{0, 2.5}, {2, 0.75}}}};
     },
     true, kDetermined,
     "a = 2.5 and c = 0.75 give the same curve: their signs make up for each other."},
    {"an outlier under a loss", [](R&, C& c) { c.hardly_counted = {6.5}; }, true, kDetermined,
     "1 point counts for less than a tenth under the loss: X = 6.5."},
    {"outliers under a loss",
     [](R&, C& c) {
       c.hardly_counted = {6.5, 7, 1, 2};
     },
     true, kDetermined,
     "4 points count for less than a tenth under the loss: the farthest at X = 6.5, 7 and 1."},
    {"two terms for one",
     [](R& r, C&) {
       r.statistics.standard_errors = {2, 1, 3};
       r.absent = {{0, {1}, 0, 1}, {2, {1}, 0, 1}};
     },
     false,
     ", but any one of the terms of a and c may be absent: the fit is hardly worse without it.",
     "a term that is not there gains as much in most fits."},
    {"a limit", [](R& r, C&) { r.limits = {1}; }, false, ", but the points show only a limit of b.",
     "As far from b as its error reaches the curve is another one or has no value"},
    {"a swing between points",
     [](R& r, C&) {
       r.swing = {0.9, 3, 4};
     },
     false, ", but between the points the curve swings farther than any point shows.",
     "Between X = 3 and 4 no point holds the curve"},
    {"a period of less than two points",
     [](R& r, C&) {
       r.swing = {0.1, 3, 4, 1.06};
     },
     false, ", but the curve swings faster than the points can show.",
     "From one point to the next the curve turns 1.1 times"},
    {"a point that bends",
     [](R& r, C&) {
       r.residuals.farthest = {57, 12.3, 2.1, 1e-6};
     },
     false, ", but one point stands out and bends the curve: X = 57, 12 standard deviations.",
     "It alone moves the parameters by 2.1 of their errors"},
    {"a point that bends nothing",
     [](R& r, C&) {
       r.residuals.farthest = {57, 12.3, 0.4, 1e-6};
     },
     true, kDetermined, "One point stands out: X = 57, 12 standard deviations. It hardly moves"},
    {"a point without which nothing is left",
     [](R& r, C&) {
       r.residuals.farthest = {57, HUGE_VAL, HUGE_VAL, 1e-6};
     },
     false, ", but one point stands out and bends the curve: X = 57, beyond all others.",
     "Without it the curve goes through all points"},
    {"alternating signs, a wave of two points",
     [](R& r, C&) { r.residuals.shape = r.residuals.alternating = 1e-5; }, false,
     ", but the residuals change their sign from point to point instead of scattering.",
     "A residual above zero is followed by one below it"},
    {"scatter beyond the weights",
     [](R& r, C&) {
       r.residuals.unequal_scatter = 12;
       r.statistics.weighting.weights = FitWeights::Relative;
     },
     false, ", but some points scatter far more than others, beyond their weights.",
     "Some points scatter 12 times more than others, beyond what weights relative to the value "
     "allow"},
    {"alternating signs", [](R& r, C&) { r.residuals.alternating = 1e-5; }, false,
     ", but the residuals change their sign from point to point instead of scattering.",
     "A residual above zero is followed by one below it"},
    {"two degrees of freedom",
     [](R& r, C&) {
       r.statistics.points = 5;
       r.statistics.degrees_of_freedom = 2;
     },
     false,
     ", but 5 points for 3 parameters leave 2 degrees of freedom: that hardly checks the model, "
     "and "
     "the errors are rough.",
     ""},
    {"a hint of a pattern in few points",
     [](R& r, C&) {
       r.statistics.points = 12;
       r.residuals.freedom = r.statistics.degrees_of_freedom = 9;
       r.residuals.alike = 0.02;
     },
     false, ", but the residuals hint at a pattern, which 12 points cannot tell from chance.", ""},
    {"a hint of a point",
     [](R& r, C&) {
       r.residuals.freedom = r.statistics.degrees_of_freedom = 9;
       r.residuals.farthest = {57, 6.3, 1.2, 0.05};
     },
     false,
     ", but one point may bend the curve, which 100 points cannot tell: X = 57, 6.3 standard "
     "deviations.",
     ""},
    {"scatter that hides as much as a third of the curve",
     [](R& r, C&) {
       r.residuals.freedom = 20;
       r.statistics.r_squared = 0.9;
     },
     false,
     ", but the scatter of 100 points would hide a deviation of the model of 37 % of the curve's "
     "spread.",
     ""},
    {"without derivatives", [](R& r, C&) { r.residuals.freedom = 0; }, false,
     ", but the derivatives have no value at the points, so that nothing tests the model.", ""},
    {"exact, without residuals to test",
     [](R& r, C&) {
       r.residuals.freedom = 0;
       r.statistics.residual_correlation = kUndefined;
     },
     true, kDetermined, ""},
    {"few points of known errors",
     [](R& r, C&) {
       r.statistics.points = 5;
       r.statistics.degrees_of_freedom = 2;
       r.statistics.weighting.errors = FitErrors::Absolute;
     },
     true, kDetermined, ""},
    {"another minimum",
     [](R& r, C&) {
       r.outcome.left_minimum = {8, 2};
     },
     true, kDetermined,
     "led into a poorer minimum; others, found by a search, lower the sum of squares from 8 to 2"},
    {"a search in vain", [](R& r, C&) { r.outcome.search_evaluations = 80; }, true, kDetermined,
     "A search for better starting values found none."},
    {"errors too great and too small at once",
     [](R& r, C&) {
       r.residuals.shape = 1e-6;
       r.statistics.chi_squared_probability = 0.9999;
     },
     false, ", but the residuals follow a pattern instead of scattering.",
     "better fit. The errors of the points, which are stated too great, hide it from χ²."},
    {"as chance has it", [](R& r, C&) { r.residuals.shape = r.residuals.alike = 0.02; }, true,
     kDetermined, ""},
    {"short of the best", [](R& r, C&) { r.newton_sum_of_squares = 1.5; }, false, kShort,
     "lowers the sum of squares from 2 to 1.5 (by 25 %)."},
    {"near the best", [](R& r, C&) { r.newton_sum_of_squares = 2 - 4e-5; }, true, kDetermined,
     "lowers the sum of squares from 2 to 1.99996 (by 0.002 %)."},
    {"far from the best", [](R& r, C&) { r.newton_sum_of_squares = 1e-6; }, false, kShort,
     "from 2 to 1E-6, 2E6 times less."},
    {"as good as the best", [](R& r, C&) { r.newton_sum_of_squares = 2 - 1e-7; }, true, kDetermined,
     ""},
    {"at the best", [](R& r, C&) { r.newton_sum_of_squares = 2; }, true, kDetermined, ""},
    {"exact model", [](R& r, C&) { r.newton_sum_of_squares = 0; }, false, kShort, "from 2 to 0."},
    {"thinned", [](R& r, C&) { r.points_in_range = 700; }, true, kDetermined,
     "100 of 700 points used: the model thins them by its number of points (150)."},
    {"lost points", [](R& r, C&) { r.undefined_points = 1; }, false,
     ", but not every point could be used.", "1 point left out"},
    {"undefined at start",
     [](R& r, C& c) {
       r.outcome.why = StopReason::UndefinedAtStart;
       c.first_undefined_x = -1.5;
       c.undefined_at_start = 13;
     },
     false,
     "The fit did not start: with the starting values the model has no value at X = -1.5 and at 12 "
     "other points.",
     ""},
    {"overflow at start", [](R& r, C&) { r.outcome.why = StopReason::UndefinedAtStart; }, false,
     "The fit did not start: the starting values are so far off that the sum of squares is beyond "
     "all numbers.",
     ""},
    {"a sign before a power", [](R&, C& c) { c.expression_warnings = {"A sign, write -(x^2)"}; },
     true, kDetermined, "write -(x^2)"},
    {"unequal scatter", [](R& r, C&) { r.residuals.unequal_scatter = 8.4; }, true, kDetermined,
     "Some points scatter 8.4 times more than others"},
    {"far unequal scatter", [](R& r, C&) { r.residuals.unequal_scatter = 84; }, false,
     ", but some points scatter far more than others and count alike.",
     "Some points scatter 84 times more than others"},
    {"no number to start from",
     [](R& r, C& c) {
       r.outcome.why = StopReason::UndefinedAtStart;
       c.infinite_names = {"a", "b"};
       c.first_undefined_x = 1;
     },
     false, "The fit did not start: a and b have no finite values to start from.", ""},
    {"weights of counts for something else", [](R&, C& c) { c.no_counts = 3; }, true, kDetermined,
     "3 values of Y below 0 or no whole number: weights as counts are for counts."},
    {"errors of X", [](R&, C& c) { c.has_x_errors = true; }, true, kDetermined,
     "The errors of X do not count."},
    {"some rows", [](R&, C& c) { c.some_rows = "every 3rd row is shown"; }, true, kDetermined,
     "Fitted is a part of the source: every 3rd row is shown."},
    {"regression curve", [](R&, C& c) { c.regression_curve = true; }, true, kDetermined,
     "regression curve were fitted"},
};
TEST(FitVerdict, SaysWhatTheNumbersMean) {
  for (const Situation& situation : kSituations) {
    SCOPED_TRACE(situation.name);
    FitResult result = testing::GoodFit();
    FitCircumstances about = Usual();
    situation.make(result, about);
    const FitVerdict verdict = JudgeFit(result, about);
    EXPECT_EQ(verdict.trustworthy, situation.trustworthy);
    const bool usual = situation.summary.find_first_of(":,") == 0;
    EXPECT_EQ(verdict.summary, (usual ? "Converged after 9 iterations" : "") + situation.summary);
    if (situation.note.empty()) {
      EXPECT_THAT(verdict.notes, ::testing::IsEmpty());
    } else {
      EXPECT_THAT(verdict.notes, ::testing::Contains(HasSubstr(situation.note)));
    }
  }
}

// What one DataSet says against a fit of several, all of them say; doubt comes before what could not be tested.
TEST(FitVerdict, OfSeveralIsThatOfTheGravest) {
  const FitCircumstances about = Usual();
  FitResult good = testing::GoodFit();
  FitResult few = testing::GoodFit();
  few.statistics.points = 6;
  FitResult bent = testing::GoodFit();
  bent.residuals.shape = 1e-6;
  for (FitResult* one : {&good, &few, &bent}) one->verdict = JudgeFit(*one, about);
  EXPECT_TRUE(few.verdict.untested);
  EXPECT_FALSE(bent.verdict.untested);
  const FitResult whole = testing::GoodFit();
  const FitShare a = {"A", &good, &about};
  const FitShare b = {"B", &few, &about};
  const FitShare c = {"C", &bent, &about};
  EXPECT_TRUE(JudgeJointFit(whole, about, std::vector{a, a}).trustworthy);
  const FitVerdict untested = JudgeJointFit(whole, about, std::vector{a, b});
  EXPECT_TRUE(untested.untested);
  EXPECT_THAT(untested.summary,
              HasSubstr("but in DataSet \"B\" 6 points for 3 parameters leave 3"));
  const FitShare by_all = {"B", &few, &about, true};
  FitResult judged = whole;
  judged.verdict = JudgeJointFit(whole, about, std::vector{a, by_all});
  EXPECT_TRUE(judged.verdict.trustworthy);
  EXPECT_EQ(JudgeShare(b, judged).summary, few.verdict.summary);
  EXPECT_TRUE(JudgeShare(by_all, judged).trustworthy);
  EXPECT_THAT(JudgeShare(by_all, judged).notes.front(),
              HasSubstr("The 6 points of DataSet \"B\" alone would hardly test the model; the 97"));
  judged.verdict.trustworthy = false;
  EXPECT_TRUE(JudgeShare(by_all, judged).untested);
  const FitVerdict doubted = JudgeJointFit(whole, about, std::vector{a, b, c});
  EXPECT_FALSE(doubted.untested || doubted.trustworthy);
  EXPECT_THAT(doubted.summary, HasSubstr("in DataSet \"C\" (and 1 other) the residuals follow"));
}

TEST(FitVerdict, NamesThreeCorrelationsAtMost) {
  FitResult result = testing::GoodFit();
  result.names = {"a", "b", "c", "d"};
  result.statistics.correlation.assign(16, 0.999);
  result.statistics.correlation[6] = -0.9999;  // b with c
  const FitVerdict verdict = JudgeFit(result, Usual());
  ASSERT_EQ(verdict.notes.size(), 4U);
  EXPECT_THAT(verdict.notes[0], HasSubstr("b and c are strongly correlated (-0.9999)"));
  EXPECT_EQ(verdict.notes[3], "3 more pairs of parameters with strong correlation.");
}

TEST(FitVerdict, OfATermThatMayBeAbsentSaysNothingTwice) {
  FitResult result = testing::GoodFit();
  result.statistics.standard_errors = {0.2, 1, 1};
  result.absent = {{0, {1}, 0.04, 0.35}};
  result.open = result.traded = {0, 1};
  result.statistics.correlation = {1, 0.999, 0, 0.999, 1, 0, 0, 0, 1};
  EXPECT_THAT(JudgeFit(result, Usual()).notes, ::testing::SizeIs(1));
  result.traded = {1, 2};
  EXPECT_THAT(JudgeFit(result, Usual()).notes,
              ::testing::Contains(HasSubstr("c has an error of more than half its value")));
}

}  // namespace
}  // namespace tarnwick
