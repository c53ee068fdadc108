#include "fit/minimise/minimise_newton.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "fitted_model.h"
#include "support/cancelling_progress.h"
#include "support/told.h"

namespace tarnwick {
namespace {

using testing::MakeModel;
using testing::MakePoints;
using testing::NamedValue;
using testing::Points;

struct HardProblem {
  std::string name;
  std::string expression;
  std::vector<NamedValue> truth;
  std::vector<std::vector<double>> starts;
  Points points;
};

std::vector<NamedValue> At(const HardProblem& problem, const std::vector<double>& values) {
  std::vector<NamedValue> at = problem.truth;
  for (std::size_t j = 0; j < at.size(); ++j) at[j].value = values[j];
  return at;
}

/// Shapes that least-squares programs are known to fail at, data generated with errors.
std::vector<HardProblem> HardProblems() {
  using std::numbers::pi;
  const auto cycle = [](double x, double period, double c, double s) {
    return c * std::cos(2 * pi * x / period) + s * std::sin(2 * pi * x / period);
  };
  return {
      {"saturation from a start beyond the plateau",
       "a*(1-exp(0-b*x))",
       {{"a", 210}, {"b", 0.55}},
       {{1, 1}, {100, 0.75}, {1, 0.01}, {1e4, 20}, {-50, 3}},
       MakePoints(6, 1, 10, 9, [](double x) { return 210 * (1 - std::exp(-0.55 * x)); })},
      {"decay from a start that knows nothing of its scale",
       "y0+a*exp(0-x/t)",
       {{"y0", 3}, {"a", 408}, {"t", 224}},
       {{0, 1, 1}, {0, 1, 1e4}, {100, -1, 0.1}},
       MakePoints(121, 0, 1200, 4, [](double x) { return 3 + 408 * std::exp(-x / 224); })},
      {"reciprocal exponential over eight decades",
       "a*exp(b/(x+c))",
       {{"a", 0.0056}, {"b", 6180}, {"c", 345}},
       {{2, 4e5, 25000}, {0.02, 4000, 250}, {1, 1000, 100}},
       MakePoints(16, 50, 125, 5, [](double x) { return 0.0056 * std::exp(6180 / (x + 345)); })},
      {"shifted power law",
       "a*(b+x)^(0-1/c)",
       {{"a", -2523}, {"b", 46.7}, {"c", 0.932}},
       {{-2000, 50, 0.8}, {-1500, 45, 0.85}, {-100, 20, 2}},
       MakePoints(154, 7, 53, 0.01,
                  [](double x) { return -2523 * std::pow(46.7 + x, -1 / 0.932); })},
      {"growth curve with a free shape",
       "a/((1+exp(b-c*x))^(1/d))",
       {{"a", 700}, {"b", 5.28}, {"c", 0.76}, {"d", 1.28}},
       {{100, 10, 1, 1}, {700, 5, 0.75, 1.3}, {500, 2, 0.3, 0.5}},
       MakePoints(
           15, 1, 15, 20,
           [](double x) { return 700 / std::pow(1 + std::exp(5.28 - 0.76 * x), 1 / 1.28); })},
      {"quotient of cubics",
       "(a+b*x+c*x^2+d*x^3)/(1+e*x+f*x^2+g*x^3)",
       {{"a", 1288},
        {"b", 1491},
        {"c", 583},
        {"d", 75.4},
        {"e", 0.966},
        {"f", 0.398},
        {"g", 0.0497}},
       {{1000, 1000, 400, 40, 0.7, 0.3, 0.03}, {1300, 1500, 500, 75, 1, 0.4, 0.05}},
       MakePoints(37, -3, 2.2, 20,
                  [](double x) {
                    return (1288 + x * (1491 + x * (583 + x * 75.4))) /
                           (1 + x * (0.966 + x * (0.398 + x * 0.0497)));
                  })},
      {"three cycles, two of unknown period",
       "m+a*cos(2*pi*x/12)+b*sin(2*pi*x/12)+c*cos(2*pi*x/p)+d*sin(2*pi*x/p)+e*cos(2*pi*x/q)+"
       "f*sin(2*pi*x/q)",
       {{"m", 10.5},
        {"a", 3.1},
        {"b", 0.5},
        {"p", 44.3},
        {"c", -1.6},
        {"d", 0.5},
        {"q", 26.9},
        {"e", 0.2},
        {"f", 1.5}},
       {{11, 3, 0.5, 40, -0.7, -1.3, 25, -0.3, 1.4}, {10, 3, 0.5, 44, -1.5, 0.5, 26, -0.1, 1.5}},
       MakePoints(168, 1, 168, 3,
                  [cycle](double x) {
                    return 10.5 + cycle(x, 12, 3.1, 0.5) + cycle(x, 44.3, -1.6, 0.5) +
                           cycle(x, 26.9, 0.2, 1.5);
                  })},
  };
}

// From far starts the same minimum as from the true values, with hardly more in the gradient than rounding.
TEST(MinimiseNewton, HardShapesReachTheMinimumFromEveryStart) {
  for (const HardProblem& problem : HardProblems()) {
    const auto model = MakeModel(problem.expression, problem.truth);
    ModelResiduals from_truth(*model, problem.points.View());
    const MinimiseOutcome best = testing::Fit(from_truth).outcome;
    for (const std::vector<double>& start : problem.starts) {
      const auto far = MakeModel(problem.expression, At(problem, start));
      ModelResiduals residuals(*far, problem.points.View());
      const NewtonOutcome fit = testing::Fit(residuals);
      const std::string about =
          problem.name + " from " + ::testing::PrintToString(start) + ": " + fit.outcome.stop_test;
      EXPECT_EQ(fit.outcome.why, StopReason::Converged) << about;
      EXPECT_NEAR(fit.outcome.value, best.value, 1e-9 * best.value) << about;
      for (std::size_t j = 0; j < best.p.size(); ++j)
        EXPECT_NEAR(fit.outcome.p[j], best.p[j], 1e-6 * std::abs(best.p[j])) << about;
      EXPECT_LE(fit.reduced.qtr.norm(), 1e-6 * std::sqrt(fit.outcome.value)) << about;
    }
  }
}

/// How each run ended, and what it took.
TEST(MinimiseNewton, HardShapesTakeAsManySteps) {
  std::vector<std::string> told;
  for (const HardProblem& problem : HardProblems()) {
    for (const std::vector<double>& start : problem.starts) {
      const auto model = MakeModel(problem.expression, At(problem, start));
      ModelResiduals residuals(*model, problem.points.View());
      const MinimiseOutcome fit = testing::Fit(residuals).outcome;
      // Rounding may lead a long way past other points.
      constexpr int kShort = 25;
      told.push_back(problem.name + ": " +
                     (fit.iterations > kShort
                          ? "many iterations, "
                          : std::to_string(fit.iterations) + " iterations, " +
                                std::to_string(fit.evaluations) + " evaluations, ") +
                     std::to_string(fit.search_evaluations) + " of a search, " + fit.stop_test);
    }
  }
  testing::ExpectTold("fit/minimise/steps.txt", "hard shapes", told);
}

// A factor that is a power of two changes no digit of the values: nothing may depend on the unit of Y.
TEST(MinimiseNewton, TheUnitOfYChangesNoStep) {
  for (const HardProblem& problem : HardProblems()) {
    for (const std::vector<double>& start : problem.starts) {
      SCOPED_TRACE(problem.name + " from " + ::testing::PrintToString(start));
      const auto fit = [&](const std::string& factor, double value) {
        const auto model = MakeModel(factor + "*(" + problem.expression + ")", At(problem, start));
        Points points = problem.points;
        for (double& y : points.y) y *= value;
        ModelResiduals residuals(*model, points.View());
        return testing::Fit(residuals).outcome;
      };
      const MinimiseOutcome own = fit("1", 1), large = fit("1048576", 0x1p20),
                            small = fit("9.5367431640625e-7", 0x1p-20);
      for (const MinimiseOutcome* other : {&large, &small}) {
        EXPECT_EQ(other->p, own.p);
        EXPECT_EQ(other->iterations, own.iterations);
        EXPECT_EQ(other->evaluations, own.evaluations);
        EXPECT_EQ(other->stop_test, own.stop_test);
      }
    }
  }
}

/// Three peaks on a slope, and starts that lead a plain run into a poorer minimum.
TEST(FitByNewton, SearchesWhereResidualsFollowAPattern) {
  const auto peak = [](double x, double x0, double s) {
    return std::exp(-0.5 * std::pow((x - x0) / s, 2));
  };
  const Points points = MakePoints(3000, 0, 40, 2, [&](double x) {
    return 60 * peak(x, 8, 1.2) + 40 * peak(x, 19, 1) + 80 * peak(x, 31, 1.5) + 0.2 * x;
  });
  const char* const expression =
      "a*exp(-0.5*((x-b)/c)^2)+d*exp(-0.5*((x-e)/f)^2)+g*exp(-0.5*((x-h)/k)^2)+l*x";
  std::vector<NamedValue> start;
  for (const double value : {20.0, 3.0, 4.0, 90.0, 9.0, 4.0, 10.0, 12.0, 0.5, 1.0})
    start.push_back({std::string(1, "abcdefghkl"[start.size()]), value});
  const auto fit = [&](int threads, Progress& progress) {
    const auto model = MakeModel(expression, start);
    ModelResiduals residuals(*model, points.View(), threads);
    return FitByNewton(residuals, residuals.Start(), {}, progress).outcome;
  };
  NoProgress progress;
  const MinimiseOutcome one = fit(1, progress);
  EXPECT_EQ(one.why, StopReason::Converged);
  EXPECT_LT(one.value, 1.36 * 3000) << "errors of up to 2 have squares of 1.33 in the mean";
  EXPECT_GT(one.left_minimum ? one.left_minimum->value : 0, 10 * one.value);
  EXPECT_LE(one.iterations, 200);
  const MinimiseOutcome two = fit(2, progress);
  EXPECT_EQ(two.p, one.p);
  EXPECT_EQ(two.evaluations, one.evaluations);
}

// A parabola leaves a pattern in an exponential that no start takes away.
TEST(FitByNewton, TellsASearchInVainApart) {
  const Points points = MakePoints(100, 0, 10, 0.01, [](double x) { return x * x + std::exp(x); });
  const auto model = MakeModel("a*exp(b*x)", {{"a", 1}, {"b", 1.1}});
  ModelResiduals residuals(*model, points.View());
  NoProgress progress;
  const MinimiseOutcome plain = MinimiseNewton(residuals, residuals.Start(), {}, progress).outcome;
  const MinimiseOutcome fit = testing::Fit(residuals).outcome;
  EXPECT_EQ(fit.p, plain.p);
  EXPECT_EQ(fit.evaluations, plain.evaluations);
  EXPECT_GT(fit.search_evaluations, 0);
  EXPECT_FALSE(fit.left_minimum);
}

TEST(MinimiseNewton, StepsThatLeaveTheDomainAreShortened) {
  // The first full step would take b below 0.
  const auto model = MakeModel("a+ln(b)*x", {{"a", 0}, {"b", 30}});
  const Points points = MakePoints(50, 0, 5, 0.01, [](double x) { return 1 - 2 * x; });
  ModelResiduals residuals(*model, points.View());
  const MinimiseOutcome outcome = testing::Fit(residuals).outcome;
  EXPECT_EQ(outcome.why, StopReason::Converged);
  EXPECT_NEAR(std::log(outcome.p[1]), -2, 0.01);
}

TEST(MinimiseNewton, ParametersThatTradeAgainstEachOtherStayNearTheStart) {
  const Points points = MakePoints(60, 0, 5, 0.01, [](double x) { return 4 * std::exp(-0.7 * x); });
  for (const char* const expression :
       {"a*exp(0-(b+c)*x)", "a*exp(0-b*c*x)", "a*exp(0-0.7*x)+0*b*c"}) {
    const auto model = MakeModel(expression, {{"a", 1}, {"b", 0.5}, {"c", 1.1}});
    ModelResiduals residuals(*model, points.View());
    const MinimiseOutcome outcome = testing::Fit(residuals).outcome;
    EXPECT_EQ(outcome.why, StopReason::Converged) << expression;
    EXPECT_NEAR(outcome.p[0], 4, 0.02) << expression;
    EXPECT_LT(std::hypot(outcome.p[1], outcome.p[2]), 5) << expression;
  }
}

TEST(MinimiseNewton, FewerPointsThanParametersAreFittedExactly) {
  const auto model = MakeModel("a+b*x+c*exp(d*x)", {{"a", 1}, {"b", 1}, {"c", 1}, {"d", 0.1}});
  const Points points{{0, 1, 2}, {1, 5, 4}};
  ModelResiduals residuals(*model, points.View());
  EXPECT_LT(testing::Fit(residuals).outcome.value, 1e-20);
}

TEST(MinimiseNewton, ManyPointsGoByNormalEquationsToTheSameMinimum) {
  const auto peak = [](double x) { return 5 * std::exp(-(x - 1) * (x - 1) / 4) + 0.2 * x; };
  const auto model = MakeModel("a*exp(0-((x-b)/c)^2)+d*x+e",
                               {{"a", 3}, {"b", 0.4}, {"c", 1.2}, {"d", 0.1}, {"e", 0.5}});
  const Points points = MakePoints(20'000, -4, 8, 0.5, peak);
  ModelResiduals residuals(*model, points.View());
  const NewtonOutcome fit = testing::Fit(residuals);
  EXPECT_EQ(fit.reduced.how, Reduction::NormalEquations);
  const ReducedJacobian orthogonal = residuals.Reduce(fit.outcome.p, Reduction::Orthogonal);
  EXPECT_LT(orthogonal.qtr.norm(), 1e-9 * std::sqrt(orthogonal.sum_of_squares));
  EXPECT_LE(fit.outcome.evaluations, 10);
}

TEST(MinimiseNewton, CancelAndLimitKeepWhatWasReached) {
  const HardProblem problem = HardProblems()[0];
  const auto model = MakeModel(problem.expression, At(problem, {500, 0.01}));
  ModelResiduals residuals(*model, problem.points.View());
  std::vector<std::vector<double>> shown;
  MinimiseOptions options;
  options.every_step = [&](std::span<const double> p) { shown.emplace_back(p.begin(), p.end()); };
  testing::CancellingProgress impatient(3);
  const MinimiseOutcome cancelled =
      MinimiseNewton(residuals, residuals.Start(), options, impatient).outcome;
  EXPECT_EQ(cancelled.why, StopReason::Cancelled);
  EXPECT_EQ(cancelled.iterations, 2);
  EXPECT_EQ(shown.size(), 3U);
  EXPECT_EQ(shown.front(), residuals.Start());
  EXPECT_EQ(shown.back(), cancelled.p);

  options.max_iterations = 2;
  const MinimiseOutcome limited = testing::Fit(residuals, options).outcome;
  EXPECT_EQ(limited.why, StopReason::IterationLimit);
  EXPECT_EQ(limited.p, cancelled.p);
  EXPECT_LT(limited.value, limited.start_value);
}

}  // namespace
}  // namespace tarnwick
