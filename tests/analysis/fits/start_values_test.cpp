#include "analysis/fits/start_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "fit/model/fit_function_file.h"
#include "fit/model/model_values.h"
#include "support/project_paths.h"

namespace tarnwick {
namespace {

struct Row {
  const char* function;
  std::vector<double> values;
  double first;  ///< X
  double last;
};

/// Points of the function with these values, and a ripple of a hundredth of their range.
FitJob JobOf(const Row& row) {
  FitJob job;
  job.settings =
      LoadFitFunction(testing::SourceFolder() / "TFN" / (std::string(row.function) + ".tfn"));
  TCurFit model;
  model.SetSettings(job.settings, false);
  for (std::size_t i = 0; i < row.values.size(); ++i)
    model.Param(static_cast<int>(i) + 1).SetValue(row.values[i]);
  model.Prepare();
  constexpr int kPoints = 300;
  for (int i = 0; i < kPoints; ++i)
    job.x.push_back(row.first + (row.last - row.first) * i / (kPoints - 1));
  job.y = ModelValues(model, job.x);
  const auto [low, high] = std::ranges::minmax(job.y);
  for (int i = 0; i < kPoints; ++i)
    job.y[static_cast<std::size_t>(i)] += 0.005 * (high - low) * std::cos(1.7 * i * i);
  job.points_in_range = job.points_chosen = kPoints;
  return job;
}

double SumOfSquares(const FitJob& job, const std::vector<ParameterSettings>& parameters) {
  FitSettings settings = job.settings;
  settings.parameters = parameters;
  TCurFit model;
  model.SetSettings(settings, false);
  model.Prepare();
  const std::vector<double> values = ModelValues(model, job.x);
  return std::transform_reduce(values.begin(), values.end(), job.y.begin(), 0.0, std::plus<>(),
                               [](double a, double b) { return (a - b) * (a - b); });
}

/// The sum of the squared distances of Y from its mean.
double Scatter(const FitJob& job) {
  const double mean = std::reduce(job.y.begin(), job.y.end()) / static_cast<double>(job.y.size());
  return std::transform_reduce(job.y.begin(), job.y.end(), 0.0, std::plus<>(),
                               [&](double y) { return (y - mean) * (y - mean); });
}

TEST(StartValues, LeadEveryKindOfFunctionToItsLeastSquares) {
  const Row rows[] = {
      {"Line", {-3e5, 42}, 0, 1e4},
      {"Exponential decay", {40, 5000, 230}, 0, 1200},
      {"Exponential decay with two terms", {0.1, 3, 2e-6, 1, 1.5e-5}, 0, 6e-5},
      {"Power law", {0.02, -1.7}, 1, 50},
      {"Gaussian with base line", {900, 5421, 12, 100, 0.03}, 5000, 6000},
      {"Lorentzian", {-2e-3, 0.31, 0.004}, 0.25, 0.4},
      {"Pseudo-Voigt", {70, 1250, 31, 0.3}, 1000, 1500},
      {"Voigt with base line", {90, -40, 3, 2, 5, 0.1}, -100, 0},
      {"Two Gaussians", {10, 620, 15, 6, 700, 25}, 500, 900},
      {"Three Lorentzians", {50, 110, 4, 80, 150, 6, 30, 190, 5}, 80, 220},
      {"Logistic", {1e6, 0.4, 31}, 0, 60},
      {"Boltzmann", {-70, 35, -28, 4.2}, -90, 50},
      {"Damped oscillation", {3, 1.5, 0.08, 0.0125, 0.7}, 0, 0.2},
      {"Michaelis-Menten", {3.2e-4, 0.07}, 0, 1},
      {"Hill", {88, 140, 2.6}, 1, 900},
      {"Arrhenius", {3e11, 62000}, 270, 380},
  };
  for (const Row& row : rows) {
    FitJob job = JobOf(row);
    const auto guess = GuessStart(job);
    ASSERT_TRUE(guess) << row.function;
    EXPECT_LT(SumOfSquares(job, *guess), 0.05 * Scatter(job)) << row.function;
    job.settings.parameters = *guess;
    NoProgress quiet;
    const FitResult found = RunFit(job, quiet);
    for (std::size_t i = 0; i < row.values.size(); ++i)
      job.settings.parameters[i].Value = row.values[i];
    const FitResult least = RunFit(job, quiet);
    EXPECT_LE(found.statistics.sum_of_squares, least.statistics.sum_of_squares * 1.0001)
        << row.function;
  }
}

TEST(StartValues, NothingIsGuessedWithoutPointsOrVariedParameters) {
  FitJob job = JobOf({"Line", {1, 2}, 0, 1});
  job.settings.parameters[0].Vary = job.settings.parameters[1].Vary = false;
  EXPECT_FALSE(GuessStart(job));
  job = JobOf({"Line", {1, 2}, 0, 1});
  job.x.clear();
  job.y.clear();
  EXPECT_FALSE(GuessStart(job));
}

}  // namespace
}  // namespace tarnwick
