// Weights, absolute errors and losses: against closed forms, against the equations that their solutions obey.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "analysis/fits/errors_between.h"
#include "analysis/fits/fit_run.h"
#include "certificate/weighted_problems.h"
#include "fit/fitted_model.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/model_report.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;

constexpr FitProcType kMethods[] = {FitProcType::cfp_Powell, FitProcType::cfp_Simplex,
                                    FitProcType::cfp_ConjGrad, FitProcType::cfp_Newton,
                                    FitProcType::cfp_SimplexPowell};

FitJob Job(const std::string& expression, const std::vector<double>& start,
           const std::vector<double>& x, const std::vector<double>& y) {
  return WeightedJob(expression, start, x, y, FitProcType::cfp_Newton);
}

FitResult Fitted(const FitJob& job) {
  NoProgress progress;
  return RunFit(job, progress);
}

TEST(FitWeights, LineByErrorsMeetsTheClosedFormByEveryMethod) {
  for (const FitProcType method : kMethods) {
    SCOPED_TRACE(NameOf(method));
    FitJob job = York(method);
    const WeightedLine line(job);
    EXPECT_NEAR(line.values[0], 6.100, 5e-4);  // as published
    EXPECT_NEAR(line.values[1], -0.611, 5e-4);
    const FitResult absolute = Fitted(job);
    EXPECT_NEAR(absolute.values[0], line.values[0], 1e-9);
    EXPECT_NEAR(absolute.values[1], line.values[1], 1e-9);
    EXPECT_NEAR(absolute.statistics.sum_of_squares, line.chi_squared, 1e-9);
    EXPECT_NEAR(absolute.statistics.standard_errors[0], line.errors[0], 1e-9);
    EXPECT_NEAR(absolute.statistics.standard_errors[1], line.errors[1], 1e-9);
    EXPECT_NEAR(absolute.statistics.aic, line.chi_squared + 4, 1e-9);
    EXPECT_THAT(absolute.verdict.notes, ::testing::Contains(HasSubstr("weighted by their errors")));
    job.settings.weighting.errors = FitErrors::Scaled;
    const FitResult scaled = Fitted(job);
    EXPECT_NEAR(scaled.statistics.standard_errors[1],
                line.errors[1] * std::sqrt(line.chi_squared / 8), 1e-9);
    job.settings.weighting.weights = FitWeights::None;
    EXPECT_GT(std::abs(Fitted(job).values[1] - line.values[1]), 0.01);
  }
}

TEST(FitWeights, DoublingAWeightIsDoublingAPoint) {
  FitJob weighted = York();
  weighted.errors.back() /= std::sqrt(2.0);
  FitJob doubled = York();
  doubled.x.push_back(doubled.x.back());
  doubled.y.push_back(doubled.y.back());
  doubled.errors.push_back(doubled.errors.back());
  const FitResult one = Fitted(weighted);
  const FitResult two = Fitted(doubled);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_NEAR(one.values[i], two.values[i], 1e-12);
    EXPECT_NEAR(one.statistics.standard_errors[i], two.statistics.standard_errors[i], 1e-12);
  }
  EXPECT_NEAR(one.statistics.r_squared, two.statistics.r_squared, 1e-12);
}

/// sum weight(f) (y - f) df/dp, for each parameter, in units of its own error.
std::vector<double> Scores(const FitJob& job, const FitResult& result,
                           const std::function<double(double r, double f)>& weighted) {
  const double a = result.values[0], b = result.values[1], c = result.values[2];
  std::vector<double> scores(3);
  for (std::size_t i = 0; i < job.x.size(); ++i) {
    const double e = std::exp(-job.x[i] / b);
    const double f = a * e + c;
    const double w = weighted(job.y[i] - f, f);
    scores[0] += w * e, scores[1] += w * a * e * job.x[i] / (b * b), scores[2] += w;
  }
  for (std::size_t k = 0; k < 3; ++k) scores[k] *= result.statistics.standard_errors[k];
  return scores;
}

TEST(FitWeights, CountsAndRelativeErrorsSolveTheirScoreEquations) {
  for (const FitProcType method : kMethods) {
    SCOPED_TRACE(NameOf(method));
    FitJob job = CountedDecay(7, method);
    const FitResult counts = Fitted(job);
    EXPECT_EQ(counts.outcome.why, StopReason::Converged) << counts.outcome.stop_test;
    for (const double score : Scores(job, counts, [](double r, double f) { return r / f; }))
      EXPECT_NEAR(score, 0, 1e-6);
    EXPECT_TRUE(counts.verdict.trustworthy) << counts.verdict.summary;
    job.settings.weighting.weights = FitWeights::Relative;
    const FitResult relative = Fitted(job);
    for (const double score : Scores(job, relative, [](double r, double f) { return r / (f * f); }))
      EXPECT_NEAR(score * relative.statistics.reduced_chi_squared, 0, 1e-6);
  }
}

TEST(FitWeights, IntervalsOfCountsHoldTheTruthAsOftenAsTheySay) {
  std::vector<int> held(3, 0);
  for (int number = 0; number < kSimulatedDecays; ++number) {
    const FitResult fit = Fitted(CountedDecay(number));
    const double quantile = IntervalQuantile(fit.statistics, 0.95);
    for (std::size_t i = 0; i < 3; ++i) {
      const double off = std::abs(fit.values[i] - DecayTruth()[i]);
      held[i] += off <= quantile * fit.statistics.standard_errors[i];
    }
  }
  for (const int count : held) {
    EXPECT_GE(count, 0.93 * kSimulatedDecays);
    EXPECT_LE(count, 0.97 * kSimulatedDecays);
  }
}

struct BandRow {
  const char* what;
  FitWeights weights;
  double (*error)(double x);  ///< of a point
};

// One more measurement lies within the band as often as it says, where errors are small and where they are great.
TEST(FitWeights, PredictionBandsHoldAMeasurementAsOftenAsTheySay) {
  constexpr int kFits = 400;
  const std::vector<double> where = {1.25, 9.25};
  const auto truth = [](double x) { return 20 + 30 * x; };
  const BandRow rows[] = {
      {"tenfold errors", FitWeights::Errors, [](double x) { return 0.5 + 0.5 * x; }},
      {"equal errors", FitWeights::Errors, [](double) { return 2.0; }},
      {"relative", FitWeights::Relative, [](double x) { return 0.02 * (20 + 30 * x); }},
      {"none", FitWeights::None, [](double) { return 2.0; }}};
  for (const BandRow& row : rows) {
    SCOPED_TRACE(row.what);
    std::mt19937 numbers(7);
    std::normal_distribution<double> normal;
    std::vector<int> held(where.size(), 0);
    for (int number = 0; number < kFits; ++number) {
      FitJob job = Job("a+b*x", {1, 1}, {}, {});
      job.settings.weighting.weights = row.weights;
      for (int i = 0; i < 40; ++i) {
        const double x = 0.25 * i;
        job.x.push_back(x);
        job.y.push_back(truth(x) + row.error(x) * normal(numbers));
        if (row.weights == FitWeights::Errors) job.errors.push_back(row.error(x));
      }
      const FitResult fit = Fitted(job);
      const std::unique_ptr<TCurFit> model =
          testing::MakeModel("a+b*x", {{"a", fit.values[0]}, {"b", fit.values[1]}});
      const FitBands bands =
          ComputeFitBands(*model, fit.statistics, where, 0.95, ErrorsBetween(job, where));
      for (std::size_t i = 0; i < where.size(); ++i) {
        const double measured = truth(where[i]) + row.error(where[i]) * normal(numbers);
        held[i] += std::abs(measured - bands.value[i]) <= bands.prediction[i];
      }
    }
    for (const int count : held) {
      EXPECT_GE(count, 0.92 * kFits);
      EXPECT_LE(count, 0.98 * kFits);
    }
  }
}

TEST(ErrorsBetween, FollowThePointsBesideAndTheLastBeyond) {
  FitJob job;
  EXPECT_TRUE(ErrorsBetween(job, std::vector{1.0}).empty());
  job.x = {1, 2, 2, 4};
  job.errors = {1, 3, 4, 1};
  const double both = std::sqrt(12.5);  // of the two at 2
  EXPECT_THAT(
      ErrorsBetween(job, std::vector{0.0, 1.0, 1.5, 2.0, 3.0, 9.0}),
      ::testing::Pointwise(::testing::DoubleNear(1e-12),
                           std::vector{1.0, 1.0, (1 + both) / 2, both, (both + 1) / 2, 1.0}));
}

TEST(FitWeights, ConstantsAreMeans) {
  const std::vector<double> x = {1, 2, 3, 4, 5, 6, 7, 8};
  const std::vector<double> y = {3, 0, 5, 2, 4, 6, 1, 3};
  FitJob job = Job("a", {1}, x, y);
  job.settings.weighting.weights = FitWeights::Counts;
  const FitResult counts = Fitted(job);
  EXPECT_NEAR(counts.values[0], 3, 1e-9);
  EXPECT_NEAR(counts.statistics.standard_errors[0], std::sqrt(3.0 / 8), 1e-9);
  double deviance = 0;
  for (const double count : y) deviance += count > 0 ? 2 * count * std::log(count / 3) : 0;
  EXPECT_NEAR(counts.statistics.aic, deviance + 2, 1e-9);
  job = Job("a*x", {1}, x, x);
  for (std::size_t i = 0; i < x.size(); ++i) job.y[i] = x[i] * (1 + 0.1 * y[i]);
  job.settings.weighting.weights = FitWeights::Relative;
  EXPECT_NEAR(Fitted(job).values[0], 1.3, 1e-9);  // the mean of y/x
}

TEST(FitWeights, LossesHoldOutliersOff) {
  FitJob job = CountedDecay(7);
  job.settings.weighting.weights = FitWeights::None;
  const FitResult sound = Fitted(job);
  for (std::size_t i = 5; i < job.y.size(); i += 10) job.y[i] += 200;
  EXPECT_GT(Fitted(job).values[2] - sound.values[2], 10);
  job.settings.IterMax = 1000;
  for (const FitLoss loss : {FitLoss::SoftL1, FitLoss::Huber, FitLoss::Cauchy}) {
    for (const FitProcType method : kMethods) {
      SCOPED_TRACE(std::to_string(static_cast<int>(loss)) + std::string(NameOf(method)));
      job.settings.weighting.loss = loss;
      job.settings.ProcType = method;
      const FitResult held = Fitted(job);
      EXPECT_EQ(held.outcome.why, StopReason::Converged) << held.outcome.stop_test;
      EXPECT_NEAR(held.values[0], sound.values[0], 4 * sound.statistics.standard_errors[0]);
      EXPECT_NEAR(held.statistics.standard_errors[0] / sound.statistics.standard_errors[0], 1.2,
                  0.5);
      EXPECT_GE(held.outcome.evaluations, held.outcome.iterations);
      if (loss == FitLoss::Cauchy) {
        EXPECT_THAT(held.verdict.notes, ::testing::Contains(HasSubstr("less than a tenth")));
      }
      const double scale = held.statistics.weighting.loss_scale;
      const auto influence = [&](double r, double) {
        const double z = r / scale * (r / scale);
        if (loss == FitLoss::Huber) return r / std::max(1.0, std::sqrt(z));
        return loss == FitLoss::Cauchy ? r / (1 + z) : r / std::sqrt(1 + z);
      };
      for (const double score : Scores(job, held, influence))
        EXPECT_NEAR(score / (scale * scale), 0, 1e-5);
    }
  }
  // A scale beyond all residuals leaves least squares.
  job.settings.weighting = {FitWeights::None, FitErrors::Automatic, FitLoss::Huber, 1e9};
  const FitResult wide = Fitted(job);
  job.settings.weighting.loss = FitLoss::Linear;
  const FitResult plain = Fitted(job);
  EXPECT_NEAR(wide.values[1], plain.values[1], 1e-9);
  EXPECT_NEAR(wide.statistics.standard_errors[1], plain.statistics.standard_errors[1], 1e-9);
}

TEST(FitWeights, LossesLeaveNoPatternWhereThereIsNone) {
  constexpr int kFits = 100;
  struct Row {
    FitLoss loss;
    double outliers;  // share of points with errors of eight times the others'
    double missing;   // height of a wave that the model does not have, in errors
    int fewest;       // fits doubted, of kFits
    int most;
  };
  const Row rows[] = {{FitLoss::Huber, 0, 0, 0, 2},      {FitLoss::Huber, 0.1, 0, 0, 2},
                      {FitLoss::SoftL1, 0.1, 0, 0, 2},   {FitLoss::Cauchy, 0.1, 0, 0, 2},
                      {FitLoss::Huber, 0.1, 3, 80, 100}, {FitLoss::Cauchy, 0.1, 3, 80, 100}};
  for (const Row& row : rows) {
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> uniform;
    int doubted = 0;
    for (int i = 0; i < kFits; ++i) {
      std::vector<double> x, y;
      for (int at = 0; at < 40; ++at) {
        const double error = 0.1 * normal(random) * (uniform(random) < row.outliers ? 8 : 1);
        x.push_back(at);
        y.push_back(5 * std::exp(-at / 10.0) + 1 + error + 0.1 * row.missing * std::sin(at / 2.0));
      }
      FitJob job = Job("a*exp(0-x/b)+c", {4, 8, 0.5}, x, y);
      job.settings.weighting.loss = row.loss;
      const FitVerdict verdict = Fitted(job).verdict;
      doubted += !verdict.trustworthy && !verdict.untested;
    }
    EXPECT_GE(doubted, row.fewest) << static_cast<int>(row.loss) << ' ' << row.outliers;
    EXPECT_LE(doubted, row.most) << static_cast<int>(row.loss) << ' ' << row.outliers;
  }
}

TEST(FitWeights, TellWhatCannotBeWeighed) {
  FitJob job = CountedDecay(7);
  job.settings.weighting.weights = FitWeights::Errors;
  EXPECT_THAT(Fitted(job).verdict.summary, HasSubstr("no errors of Y to weigh them by"));
  job = York();
  job.settings.weighting = {FitWeights::Errors, FitErrors::Absolute, FitLoss::Cauchy, 0};
  EXPECT_THAT(Fitted(job).verdict.summary, HasSubstr("absolute errors need the linear loss"));
  job = York();
  for (double& error : job.errors) error /= 10;
  const FitResult small = Fitted(job);
  EXPECT_FALSE(small.verdict.trustworthy);
  EXPECT_THAT(small.verdict.summary, HasSubstr("farther off than their errors allow"));
  for (double& error : job.errors) error *= 1000;
  EXPECT_THAT(Fitted(job).verdict.notes, ::testing::Contains(HasSubstr("stated too great")));
  job = Job("a*x+b", {1, -3}, {0, 1, 2, 3, 4, 5}, {-4, -2, -1, 2, 2, 5});
  job.settings.weighting.weights = FitWeights::Counts;
  const FitResult negative = Fitted(job);
  EXPECT_FALSE(negative.verdict.trustworthy);
  EXPECT_THAT(negative.verdict.notes, ::testing::Contains(HasSubstr("weighed nothing")));
  EXPECT_EQ(negative.statistics.degrees_of_freedom, 6 - negative.points_without_weight - 2);
  for (double& y : job.y) y = -2 - std::abs(y);
  const FitResult none = Fitted(job);
  EXPECT_THAT(none.verdict.summary, HasSubstr("no point has a weight"));
  EXPECT_EQ(none.values, (std::vector<double>{1, -3}));
}

}  // namespace
}  // namespace tarnwick
