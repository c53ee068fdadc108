// Bounds and ties of a fit: a parameter driven against its bound leaves the others where they are best with it held there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "base/undefined.h"
#include "fit/model/model_report.h"

namespace tarnwick {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double kNone = std::numeric_limits<double>::infinity();
constexpr FitProcType kMethods[] = {FitProcType::cfp_Newton, FitProcType::cfp_Powell,
                                    FitProcType::cfp_Simplex, FitProcType::cfp_ConjGrad,
                                    FitProcType::cfp_SimplexPowell};

struct Bounded {
  double value, low, high;
};

/// 3 exp(-0.5 x) + 1 with a ripple, by a*exp(-b*x)+c.
FitJob Decay(const std::vector<Bounded>& parameters, FitProcType method = FitProcType::cfp_Newton) {
  FitJob job;
  job.settings.Expression = "a*exp(-b*x)+c";
  job.settings.ProcType = method;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    ParameterSettings& one = job.settings.parameters.emplace_back();
    one.Name = std::string(1, static_cast<char>('a' + i));
    one.Value = parameters[i].value;
    one.Low = parameters[i].low;
    one.High = parameters[i].high;
    one.Vary = true;
  }
  for (int i = 0; i < 200; ++i) {
    job.x.push_back(i / 20.0);
    job.y.push_back(3 * std::exp(-0.5 * job.x.back()) + 1 + 0.01 * std::cos(1000.0 * i * i));
  }
  job.points_in_range = job.points_chosen = 200;
  job.options.finish = FinishingStep::Yes;
  return job;
}

FitResult Fitted(const FitJob& job) {
  NoProgress progress;
  return RunFit(job, progress);
}

TEST(FitBounds, WhatIsDrivenAgainstABoundStandsThereByEveryMethod) {
  const Bounded free{1, -kNone, kNone};
  const std::vector<Bounded> rows[] = {
      {free, free, {1.5, 1.2, kNone}},
      {free, {0.2, 0.1, 0.3}, free},
      {{1, 0, 2}, free, free},
      {{1, 0, 2}, {0.2, 0.1, 0.4}, {0, -1, 0.5}},
      {{2, 0, 2}, {0.4, 0.1, 0.4}, {-1, -1, 3}},
      {{1, 0, 10}, {0.6, 0.55, 10}, {0, 0, 10}},
  };
  for (const auto& row : rows) {
    for (const FitProcType method : kMethods) {
      SCOPED_TRACE(std::to_string(row[2].value) + std::string(NameOf(method)));
      const FitResult fit = Fitted(Decay(row, method));
      EXPECT_EQ(fit.outcome.why, StopReason::Converged) << fit.outcome.stop_test;
      ASSERT_FALSE(fit.at_bound.empty());
      FitJob held = Decay(row);
      for (const std::int32_t i : fit.at_bound) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_TRUE(fit.values[at] == row[at].low || fit.values[at] == row[at].high);
        EXPECT_TRUE(IsUndefined(fit.statistics.standard_errors[at]));
        held.settings.parameters[at].Value = fit.values[at];
        held.settings.parameters[at].Vary = false;
      }
      const FitResult rest = Fitted(held);
      EXPECT_NEAR(fit.outcome.value, rest.outcome.value, 1e-9 * rest.outcome.value);
      std::size_t next = 0;
      for (std::size_t j = 0; j < 3; ++j) {
        if (!held.settings.parameters[j].Vary) continue;
        EXPECT_NEAR(fit.values[j], rest.values[next++], 1e-6);
      }
      EXPECT_THAT(fit.verdict.summary, HasSubstr("bound"));
      EXPECT_THAT(fit.verdict.notes, Contains(HasSubstr(" stands at its bound ")));
    }
  }
}

TEST(FitBounds, NotReachedTheyChangeNothing) {
  const FitResult bounded = Fitted(Decay({{1, 0, 100}, {1, -5, kNone}, {0, -50, 50}}));
  const Bounded free{1, -kNone, kNone};
  const FitResult plain = Fitted(Decay({free, free, {0, -kNone, kNone}}));
  EXPECT_EQ(bounded.values, plain.values);
  EXPECT_EQ(bounded.outcome.evaluations, plain.outcome.evaluations);
  EXPECT_THAT(bounded.at_bound, ElementsAre());
  // Left again when the way leads back inside.
  const FitResult left = Fitted(Decay({{5, 0, 5}, {0.1, 0.1, 2}, {3, 0, 3}}));
  EXPECT_THAT(left.at_bound, ElementsAre());
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(left.values[i], plain.values[i], 1e-7);
}

TEST(FitBounds, WhatCannotHoldIsRefused) {
  EXPECT_THAT(Fitted(Decay({{1, 2, 0}, {1, 0, 2}, {0, -1, 1}})).verdict.summary,
              HasSubstr("The bounds of \"a\" are crossed"));
}

// The period is found where the width of the search reaches it.
TEST(FitBounds, AStartingDeviationIsTheWidthOfTheSearch) {
  for (const auto& [width, found] : {std::pair(0.1, false), std::pair(4.0, true)}) {
    FitJob job = Decay({{1, -kNone, kNone}, {6, -kNone, kNone}});
    job.settings.Expression = "a*sin(2*pi*x/b)";
    job.settings.parameters[1].StartDev = width;
    for (std::size_t i = 0; i < job.x.size(); ++i)
      job.y[i] = 2 * std::sin(2 * M_PI * job.x[i] / 2.6) +
                 0.01 * std::cos(1000.0 * static_cast<double>(i * i));
    EXPECT_EQ(std::abs(Fitted(job).values[1] - 2.6) < 0.1, found) << width;
  }
}

TEST(FitTies, GiveValuesAndErrorsOfTheOthers) {
  const Bounded free{1, -kNone, kNone};
  FitJob job = Decay({free, free});
  ParameterSettings& tied = job.settings.parameters.emplace_back();
  tied.Name = "c";
  tied.Tie = "a/3";
  const FitResult fit = Fitted(job);
  FitJob written = Decay({free, free});
  written.settings.Expression = "a*exp(-b*x)+a/3";
  const FitResult same = Fitted(written);
  EXPECT_EQ(fit.values, same.values);
  ASSERT_EQ(fit.tied.size(), 1U);
  EXPECT_NEAR(fit.tied[0].value, fit.values[0] / 3, 1e-15);
  EXPECT_NEAR(fit.tied[0].error, fit.statistics.standard_errors[0] / 3, 1e-12);
  EXPECT_TRUE(fit.verdict.trustworthy) << fit.verdict.summary;
}

}  // namespace
}  // namespace tarnwick
