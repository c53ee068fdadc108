// What a verdict says while one of the figures that it goes by takes value after value, about each threshold.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "base/undefined.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/fit_verdict.h"
#include "good_fit.h"
#include "support/told.h"

namespace tarnwick {
namespace {

FitResult Good() {
  FitResult result = testing::GoodFit();
  result.statistics.standard_errors = {0.1, 0.1, 0.1};
  return result;
}

std::string Told(const FitVerdict& verdict) {
  std::string told = verdict.trustworthy ? "trusted" : verdict.untested ? "untested" : "doubted";
  told += " " + verdict.summary;
  for (const std::string& note : verdict.notes) told += " / " + note;
  return told;
}

struct Figure {
  const char* name;
  std::function<void(FitResult&, FitCircumstances&, double)> set;
  std::vector<double> values;
};

using R = FitResult;
using C = FitCircumstances;

/// Just below, at and just above each.
std::vector<double> About(const std::vector<double>& values) {
  std::vector<double> about;
  for (const double value : values) {
    for (const double share : {0.999, 1.0, 1.001}) about.push_back(value * share);
  }
  return about;
}

TEST(VerdictSweep, SentencesChangeAtTheirThresholds) {
  const auto whole = [](double value) { return static_cast<std::int64_t>(value); };
  const Figure figures[] = {
      {"shape", [](R& r, C&, double v) { r.residuals.shape = v; }, About({3e-3, 1e-3, 0.15})},
      {"lagged", [](R& r, C&, double v) { r.residuals.lagged = v; }, About({1e-4, 1e-3, 3e-3})},
      {"alike", [](R& r, C&, double v) { r.residuals.alike = v; }, About({1e-3, 3e-3, 0.01})},
      {"alternating", [](R& r, C&, double v) { r.residuals.alternating = v; },
       About({1e-3, 3e-3, 0.01})},
      {"shape and alternating",
       [](R& r, C&, double v) { r.residuals.shape = 1e-5, r.residuals.alternating = v; },
       {1e-6, 1e-3, 0.5}},
      {"chance of the farthest point",
       [](R& r, C&, double v) {
         r.residuals.farthest = {57, 5, 2, v};
       },
       About({1e-3, 3e-3})},
      {"pull of the farthest point",
       [](R& r, C&, double v) {
         r.residuals.farthest = {57, 5, v, 1e-6};
       },
       About({0.2, 0.5, 1})},
      {"scatter, all alike", [](R& r, C&, double v) { r.residuals.unequal_scatter = v; },
       About({1, 3, 4, 10})},
      {"scatter, by errors",
       [](R& r, C&, double v) {
         r.residuals.unequal_scatter = v;
         r.statistics.weighting.weights = FitWeights::Errors;
       },
       About({1, 3, 4, 10})},
      {"scatter, by counts",
       [](R& r, C&, double v) {
         r.residuals.unequal_scatter = v;
         r.statistics.weighting.weights = FitWeights::Counts;
       },
       {4, 12}},
      {"degrees of freedom",
       [=](R& r, C&, double v) {
         r.statistics.points = 3 + whole(v);
         r.residuals.freedom = r.statistics.degrees_of_freedom = whole(v);
       },
       {-1, 0, 1, 2, 3, 4, 5, 12, 13, 14}},
      {"degrees of freedom of absolute errors",
       [=](R& r, C&, double v) {
         r.statistics.points = 3 + whole(v);
         r.residuals.freedom = r.statistics.degrees_of_freedom = whole(v);
         r.statistics.weighting.errors = FitErrors::Absolute;
       },
       {-1, 0, 1, 2}},
      {"degrees of freedom of an exact model",
       [=](R& r, C&, double v) {
         r.statistics.points = 3 + whole(v);
         r.residuals.freedom = r.statistics.degrees_of_freedom = whole(v);
         r.statistics.residual_correlation = kUndefined;
       },
       {0, 1, 2, 3}},
      {"freedom of the residuals",
       [=](R& r, C&, double v) { r.residuals.freedom = whole(v); },
       {0, 3, 4, 6}},
      {"a hint in few points",
       [](R& r, C&, double v) {
         r.statistics.points = 16;
         r.residuals.freedom = r.statistics.degrees_of_freedom = 13;
         r.residuals.shape = v;
       },
       About({0.003 * std::pow(30 / 13.0, 3)})},
      {"a hint in few points of several",
       [](R& r, C&, double v) {
         r.statistics.points = 28;
         r.residuals.freedom = r.statistics.degrees_of_freedom = 25;
         r.residuals.of_several = true;
         r.residuals.shape = v;
       },
       About({0.003 * std::pow(30 / 25.0, 3), 5 * 0.003 * std::pow(30 / 25.0, 3)})},
      {"a point hinted",
       [](R& r, C&, double v) {
         r.statistics.points = 13;
         r.residuals.freedom = r.statistics.degrees_of_freedom = 10;
         r.residuals.farthest = {57, 4, 1, v};
       },
       About({0.003 * 27, 0.15})},
      {"R squared",
       [](R& r, C&, double v) { r.statistics.r_squared = v; },
       {-1e-3, 0, 1e-10, 0.058, 0.059, 0.8, 0.9, 1}},
      {"R squared of one parameter",
       [](R& r, C&, double v) { r.statistics.varied = 1, r.statistics.r_squared = v; },
       {-1e-5, -1e-7, 0, 0.5}},
      {"chance of the sum of squares",
       [](R& r, C&, double v) { r.statistics.chi_squared_probability = v; },
       {0.000999, 0.001, 0.001001, 0.5, 0.998999, 0.999, 0.999001}},
      {"too small and a shape",
       [](R& r, C&, double v) {
         r.statistics.chi_squared_probability = v, r.residuals.shape = 1e-6;
       },
       {1e-5, 0.5, 0.9999}},
      {"swing",
       [](R& r, C&, double v) {
         r.swing = {v, 3, 4};
       },
       About({0.45})},
      {"turns",
       [](R& r, C&, double v) {
         r.swing = {0.1, 3, 4, v};
       },
       About({0.5, 1})},
      {"correlation",
       [](R& r, C&, double v) { r.statistics.correlation[5] = v; },
       {-0.991, -0.99, -0.989, 0.989, 0.99, 0.991, 1}},
      {"finishing sum of squares",
       [](R& r, C&, double v) { r.newton_sum_of_squares = v; },
       {2, 2 - 1e-9, 2 - 3e-9, 2 - 1e-6, 1.9999, 1.9998, 1.98, 1.979, 1.97, 0.02, 0.0199, 0, 2.5}},
      {"chance of an absent term",
       [](R& r, C&, double v) {
         r.absent = {{0, {1}, 0.0412345, v}};
       },
       {0.004, 0.35, 0.499, 0.5, 1}},
      {"turns of an equal value",
       [](R& r, C&, double v) {
         r.equal = {{1, 3 - v, v}};
       },
       {0, 1, 3}},
      {"stuck",
       [=](R& r, C&, double v) {
         if (v < 3) r.values[static_cast<std::size_t>(whole(v))] = 1;
         if (v == 3) r.values = {1, 1, 4};
         if (v == 4) r.values = {1, 3, 4}, r.unmoved = {0};
         if (v == 5) r.values = {1, 3, 4}, r.at_bound = {0};
         if (v == 6) r.values = {1, 3, 4}, r.outcome.changed = false;
       },
       {0, 1, 2, 3, 4, 5, 6}},
      {"parameters that say little",
       [=](R& r, C&, double v) {
         (v < 2   ? r.open
          : v < 4 ? r.limits
          : v < 6 ? r.traded
                  : r.at_bound) = static_cast<int>(v) % 2 == 0 ? std::vector<std::int32_t>{1}
                                                               : std::vector<std::int32_t>{0, 2};
       },
       {0, 1, 2, 3, 4, 5, 6, 7}},
      {"outliers",
       [=](R&, C& c, double v) {
         for (int i = 0; i < v; ++i) c.hardly_counted.push_back(i + 0.5);
       },
       {0, 1, 2, 3, 4}},
      {"points left out",
       [=](R& r, C& c, double v) {
         if (v == 0) r.points_without_error = 1;
         if (v == 1) r.points_without_error = 2;
         if (v == 2) r.points_without_weight = 1;
         if (v == 3) r.undefined_points = 3;
         if (v == 4) r.points_used = 99;
         if (v == 5) c.no_counts = 1;
         if (v == 6) c.weighted_unasked = true;
         if (v == 7) c.ignores_x = true;
       },
       {0, 1, 2, 3, 4, 5, 6, 7}},
      {"refusals",
       [=](R& r, C& c, double v) {
         r.outcome.why = v < 3 ? StopReason::NoPoints : StopReason::UndefinedAtStart;
         if (v == 0) r.points_without_error = 1;
         if (v == 1) r.points_without_error = r.undefined_points = 1;
         if (v == 3) c.unknown_names = {"q"};
         if (v == 4) c.unknown_names = {"q", "r"}, c.infinite_names = {"a"};
         if (v == 5) c.infinite_names = {"a"};
         if (v == 6) c.extreme_data = {'X', 1};
         if (v == 7) c.first_undefined_x = 3, c.undefined_at_start = 1;
         if (v == 8) c.first_undefined_x = 3, c.undefined_at_start = 2;
         if (v == 9) r.outcome.why = StopReason::NothingVaried;
         if (v == 10) r.outcome.why = StopReason::TooManyParameters, r.outcome.message = "Too many";
       },
       {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"ends",
       [=](R& r, C& c, double v) {
         c.max_iterations = v == 1 ? 1 : 200;
         if (v < 2) r.outcome.why = StopReason::IterationLimit;
         if (v == 2) r.outcome.why = StopReason::Cancelled, r.outcome.iterations = 1;
         if (v == 3) r.outcome.why = StopReason::NoFurtherDescent, r.newton_sum_of_squares = 1;
         if (v == 4) r.outcome.left_minimum = {8, 7.5};
         if (v == 5) r.outcome.search_evaluations = 1;
       },
       {0, 1, 2, 3, 4, 5}},
  };
  for (const Figure& figure : figures) {
    std::vector<std::string> told;
    std::string before;
    for (const double value : figure.values) {
      FitResult result = Good();
      FitCircumstances about;
      about.max_iterations = 200;
      about.thinned_to = 150;
      figure.set(result, about, value);
      const std::string now = Told(JudgeFit(result, about));
      told.push_back(GeneralText(value, 6) + ": " + (now == before ? "the same" : now));
      before = now;
    }
    testing::ExpectTold("fit/judge/verdicts.txt", figure.name, told);
  }
}

std::string Told(const std::vector<double>& numbers) {
  std::string told;
  for (const double number : numbers) told += ' ' + GeneralText(number, 6);
  return told;
}

/// All figures of a fit whose reduced Jacobian is `r`.
std::vector<std::string> Told(const Eigen::MatrixXd& r, const FittedPoints& points) {
  ReducedJacobian reduced;
  reduced.sum_of_squares = 6;
  reduced.r = r;
  const FitFigures figures = ComputeFitFigures(reduced, points);
  const FitStatistics& s = figures.statistics;
  std::vector<std::string> told = {
      "quality" + Told({static_cast<double>(s.degrees_of_freedom), s.residual_deviation,
                        s.reduced_chi_squared, s.chi_squared_probability, s.r_squared,
                        s.adjusted_r_squared, s.aic, s.aicc, s.bic, s.unit_variance}),
      "errors" + Told(s.standard_errors), "covariance" + Told(s.covariance),
      "correlation" + Told(s.correlation), "determined" + Told(s.determined_covariance)};
  for (const SingularDirection& direction : figures.singular_directions)
    told.push_back("trade" + Told({direction.parameters.begin(), direction.parameters.end()}));
  told.push_back("unmoved" + Told({figures.unmoved.begin(), figures.unmoved.end()}));
  return told;
}

TEST(FitFiguresSweep, AreTheirFormulas) {
  Eigen::MatrixXd two(2, 2), trading(3, 3), still(3, 3);
  two << 4, 2, 0, 1;
  trading << 2, 4, 1, 0, 0, 0, 0, 0, 3;
  still << 2, 0, 1, 0, 0, 0, 0, 0, 3;
  const Eigen::MatrixXd one = two.topLeftCorner(1, 1);
  FittedPoints plain{10, 30}, absolute = plain, counts = plain, relative = plain, robust = plain;
  absolute.weighting.errors = FitErrors::Absolute;
  counts.weighting.weights = FitWeights::Counts;
  FittedPoints true_counts = counts;
  true_counts.weighting.errors = FitErrors::Absolute;
  true_counts.likelihood_term = 5.5;
  relative.weighting.weights = FitWeights::Relative;
  relative.likelihood_term = 2.5;
  robust.weighting.loss = FitLoss::Huber;
  robust.robust_variance = 2;
  robust.robust_measurement = 3;
  const struct {
    const char* name;
    Eigen::MatrixXd r;
    FittedPoints points;
  } rows[] = {{"two parameters", two, plain},
              {"absolute errors", two, absolute},
              {"counts", two, counts},
              {"counts of absolute errors", two, true_counts},
              {"relative errors", two, relative},
              {"a loss", two, robust},
              {"one parameter", one, plain},
              {"as many points as parameters", two, {2, 30}},
              {"four points", two, {4, 30}},
              {"five points", two, {5, 30}},
              {"no spread", two, {10, 0}},
              {"two that trade", trading, plain},
              {"one that moves nothing", still, plain}};
  for (const auto& row : rows)
    testing::ExpectTold("fit/judge/figures.txt", row.name, Told(row.r, row.points));
}

TEST(HardlyDetermined, AreThoseOfGreatErrorsAndStrongCorrelation) {
  const struct {
    double error, value, correlation;
    bool found;
  } rows[] = {{0.51, 1, 0.995, true}, {0.5, 1, 0.995, false},  {0.51, -1, -0.995, true},
              {0.51, 1, 0.99, false}, {0.51, 1, 0.9901, true}, {0.51, 2, 0.995, false},
              {0, 0, 0.995, false},   {0.1, 0, 0.995, true},   {kUndefined, 1, 0.995, false}};
  for (const auto& row : rows) {
    FitStatistics statistics;
    statistics.standard_errors = {1e-3, row.error, 1e-3};
    statistics.correlation = {1, 0, 0, 0, 1, row.correlation, 0, row.correlation, 1};
    const std::vector<double> values = {1, row.value, 1};
    EXPECT_EQ(HardlyDetermined(statistics, values, 0.5),
              row.found ? std::vector<std::int32_t>{1} : std::vector<std::int32_t>())
        << row.error << ' ' << row.correlation;
  }
}

}  // namespace
}  // namespace tarnwick
