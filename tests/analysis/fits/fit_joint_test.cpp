// Several DataSets in one fit, and several models of one DataSet.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "analysis/fits/fit_comparison.h"
#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/split_mix.h"
#include "base/undefined.h"
#include "fit/model/model_report.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;

FitJob Job(const std::string& name, const std::string& expression,
           const std::vector<std::pair<std::string, double>>& start, double height,
           FitProcType method = FitProcType::cfp_Newton) {
  FitJob job;
  job.data_set = name;
  job.settings.Expression = expression;
  job.settings.ProcType = method;
  job.options.finish = FinishingStep::Yes;
  for (const auto& [parameter, value] : start) {
    ParameterSettings& one = job.settings.parameters.emplace_back();
    one.Name = parameter;
    one.Value = value;
    one.Vary = true;
  }
  for (int i = 0; i < 40; ++i) {
    job.x.push_back(0.25 * i);
    job.y.push_back(height * std::exp(-0.4 * job.x.back()) + 1 + 0.02 * std::cos(1234.5 * i * i));
  }
  job.points_in_range = job.points_chosen = 40;
  return job;
}

constexpr auto kDecay = "a*exp(-k*x)+c";

// One model with a switch between the DataSets says what their common fit must be.
TEST(JointFit, IsTheFitOfOneModelOverAllByEveryMethod) {
  for (const FitProcType method :
       {FitProcType::cfp_Newton, FitProcType::cfp_Powell, FitProcType::cfp_Simplex,
        FitProcType::cfp_ConjGrad, FitProcType::cfp_SimplexPowell}) {
    SCOPED_TRACE(NameOf(method));
    const std::vector<FitJob> jobs = {
        Job("A", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 3, method),
        Job("B", "h*exp(-K*x)+c", {{"h", 1}, {"c", 0}, {"K", 7}}, 9, method)};
    NoProgress progress;
    const std::vector<std::string> shared = {"K"};
    const JointFit fit = RunJointFit(jobs, shared, progress);
    EXPECT_THAT(fit.whole.names, ElementsAre("a (A)", "k", "c (A)", "h (B)", "c (B)"));
    FitJob one = Job("", "", {}, 3);
    one.settings.Expression = "(x<100)*(a*exp(-k*x)+c)+(x>100)*(h*exp(-k*(abs(x-200)+x-200)/2)+d)";
    for (const char* name : {"a", "k", "c", "h", "d"}) {
      ParameterSettings& parameter = one.settings.parameters.emplace_back();
      parameter.Name = name;
      parameter.Value = 1;
      parameter.Vary = true;
    }
    for (std::size_t i = 0; i < 40; ++i) {
      one.x.push_back(200 + jobs[1].x[i]);
      one.y.push_back(jobs[1].y[i]);
    }
    const FitResult all = RunFit(one, progress);
    EXPECT_NEAR(fit.whole.outcome.value / all.outcome.value, 1, 1e-9);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_NEAR(fit.whole.values[i], all.values[i], 1e-7);
      EXPECT_NEAR(fit.whole.statistics.standard_errors[i] / all.statistics.standard_errors[i], 1,
                  1e-6);
    }
    ASSERT_EQ(fit.parts.size(), 2U);
    EXPECT_THAT(fit.parts[1].names, ElementsAre("h", "c", "K"));
    EXPECT_EQ(fit.parts[1].values[2], fit.whole.values[1]);
    EXPECT_EQ(fit.parts[0].statistics.standard_errors[1], fit.whole.statistics.standard_errors[1]);
    EXPECT_NEAR(fit.parts[0].statistics.sum_of_squares + fit.parts[1].statistics.sum_of_squares,
                fit.whole.statistics.sum_of_squares, 1e-12);
    EXPECT_TRUE(fit.parts[0].verdict.trustworthy) << fit.parts[0].verdict.summary;
  }
}

// Six points are too few for a decay of their own; what ten DataSets with one rate say together is enough, and enough to see that
// their function is another.
TEST(JointFit, WhatFewPointsOfEachCannotTestAllOfThemDo) {
  const struct {
    const char* name;
    const char* function;
    double bend;
    std::vector<std::string> shared;
    bool whole_trusted, first_trusted, untested;
  } rows[] = {{"one rate", kDecay, 0, {"k", "c"}, true, true, false},
              {"nothing in common", kDecay, 0, {}, false, false, true},
              {"another function", kDecay, 0.3, {"k", "c"}, false, false, false}};
  for (const auto& row : rows) {
    std::vector<FitJob> jobs;
    for (int set = 0; set < 10; ++set) {
      FitJob job =
          Job("Run " + std::to_string(set), row.function, {{"a", 1}, {"k", 1}, {"c", 0}}, 3);
      job.x.clear();
      job.y.clear();
      for (int i = 0; i < 6; ++i) {
        job.x.push_back(i);
        job.y.push_back((3 + set) * std::exp(-0.4 * i) + 1 + row.bend * (i % 3 == 1) +
                        0.02 * std::cos(1234.5 * (6 * set + i) * (6 * set + i)));
      }
      job.points_in_range = job.points_chosen = 6;
      jobs.push_back(job);
    }
    NoProgress progress;
    const JointFit fit = RunJointFit(jobs, row.shared, progress);
    EXPECT_EQ(fit.whole.verdict.trustworthy, row.whole_trusted) << fit.whole.verdict.summary;
    EXPECT_EQ(fit.whole.verdict.untested, row.untested) << fit.whole.verdict.summary;
    EXPECT_EQ(fit.parts[0].verdict.trustworthy, row.first_trusted) << fit.parts[0].verdict.summary;
  }
}

// Each of ten DataSets may look odd by chance: a right model is doubted no more often for that.
TEST(JointFit, ARightModelOfManyDataSetsIsSeldomDoubted) {
  std::uint64_t state = 5;
  const auto normal = [&state] {  // of twelve uniform numbers
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += NextSplitMix(state);
    return sum;
  };
  constexpr int kFits = 200;
  int doubted = 0;
  for (int fit = 0; fit < kFits; ++fit) {
    std::vector<FitJob> jobs;
    for (int set = 0; set < 10; ++set) {
      FitJob& job = jobs.emplace_back(
          Job("Run " + std::to_string(set), kDecay, {{"a", 3}, {"k", 0.4}, {"c", 1}}, 3 + set));
      for (std::size_t i = 0; i < job.y.size(); ++i)
        job.y[i] = (3 + set) * std::exp(-0.4 * job.x[i]) + 1 + 0.1 * normal();
    }
    NoProgress progress;
    doubted +=
        !RunJointFit(jobs, std::vector<std::string>{"k", "c"}, progress).whole.verdict.trustworthy;
  }
  EXPECT_LE(doubted, kFits / 40);
}

// Of 43 chosen points two have no error, one has no Y.
TEST(JointFit, CountsThePointsThatTakePartInEachDataSet) {
  std::vector<FitJob> jobs = {Job("A", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 3),
                              Job("B", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 9)};
  jobs[1].points_in_range = jobs[1].points_chosen = 43;
  jobs[1].points_without_error = 2;
  NoProgress progress;
  const JointFit fit = RunJointFit(jobs, std::vector<std::string>{"k"}, progress);
  EXPECT_EQ(fit.parts[0].undefined_points, 0);
  EXPECT_EQ(fit.parts[1].undefined_points, 1);
  EXPECT_EQ(fit.whole.undefined_points, 1);
  EXPECT_EQ(fit.parts[0].statistics.points, 40);
  EXPECT_EQ(fit.parts[1].statistics.points, 40);
  EXPECT_EQ(fit.whole.statistics.points, 80);
  EXPECT_EQ(fit.whole.points_used, 83);
  EXPECT_EQ(RunFit(jobs[1], progress).undefined_points, 1);
}

TEST(JointFit, RefusesWhatCannotBeShared) {
  std::vector<FitJob> jobs = {Job("A", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 3),
                              Job("B", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 9)};
  const auto refusal = [&](const std::string& name) -> std::string {
    NoProgress progress;
    try {
      RunJointFit(jobs, std::vector<std::string>{name}, progress);
    } catch (const Error& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(refusal("q"), "The model of DataSet \"A\" has no parameter \"q\" to share.");
  jobs[1].settings.parameters[1].Vary = false;
  EXPECT_EQ(refusal("k"),
            "The parameter \"k\" of DataSet \"B\" is held fixed: what is shared is varied in every "
            "DataSet.");
}

TEST(FitComparison, RanksByAiccAndTestsWhatIsNested) {
  const std::vector<FitJob> jobs = {
      Job("", "a+b*x", {{"a", 0}, {"b", 1}}, 3), Job("", kDecay, {{"a", 1}, {"k", 1}, {"c", 0}}, 3),
      Job("", "p+q*x+r*x^2", {{"p", 0}, {"q", 1}, {"r", 1}}, 3),
      Job("", "a*exp(-k*x)+c+d*x", {{"a", 1}, {"k", 1}, {"c", 0}, {"d", 0}}, 3)};
  std::vector<FitResult> results;
  NoProgress progress;
  results.reserve(jobs.size());
  for (const FitJob& job : jobs) results.push_back(RunFit(job, progress));
  const FitComparison comparison = CompareFits(jobs, results);
  EXPECT_EQ(comparison.ranks[0].number, 1U);
  EXPECT_EQ(comparison.ranks[1].number, 3U);
  EXPECT_EQ(comparison.ranks[3].number, 0U);
  EXPECT_GT(comparison.ranks[0].weight, 0.6);
  std::vector<std::pair<std::size_t, std::size_t>> nested;
  for (const NestedTest& test : comparison.tests) nested.emplace_back(test.smaller, test.larger);
  EXPECT_THAT(nested, ElementsAre(std::pair(0U, 2U), std::pair(0U, 3U), std::pair(1U, 3U)));
  const NestedTest& parabola = comparison.tests[0];
  const double ratio =
      (results[0].statistics.sum_of_squares - results[2].statistics.sum_of_squares) /
      (results[2].statistics.sum_of_squares / 37);
  EXPECT_NEAR(parabola.ratio, ratio, 1e-9 * ratio);
  EXPECT_LT(parabola.probability, 1e-6);
  EXPECT_GT(comparison.tests[2].probability, 0.05);
  // A line is the decay with a = 0 and any k: of sixty such tests with chance alone, fifteen were below 0.05.
  EXPECT_TRUE(IsUndefined(comparison.tests[1].probability));
}

}  // namespace
}  // namespace tarnwick
