#include "analysis/fits/start_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <numbers>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
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
  int points = 80;
};

/// Points of the function with these values, and a scatter of a hundredth of their range.
FitJob JobOf(const Row& row) {
  FitJob job;
  job.settings =
      LoadFitFunction(testing::SourceFolder() / "TFN" / (std::string(row.function) + ".tfn"));
  TCurFit model;
  model.SetSettings(job.settings, MarkModified::No);
  for (std::size_t i = 0; i < row.values.size(); ++i)
    model.Param(static_cast<int>(i) + 1).SetValue(row.values[i]);
  model.Prepare();
  for (int i = 0; i < row.points; ++i)
    job.x.push_back(row.first + (row.last - row.first) * i / (row.points - 1));
  job.y = ModelValues(model, job.x);
  const auto [low, high] = std::ranges::minmax(job.y);
  const double scatter = 0.01 * (high - low);
  std::mt19937 random(1);
  for (double& y : job.y)
    y += scatter * (static_cast<double>(random()) / 0x1p31 - 1) * std::numbers::sqrt3;
  job.points_in_range = job.points_chosen = row.points;
  return job;
}

double SumOfSquares(const FitJob& job, const std::vector<ParameterSettings>& parameters) {
  FitSettings settings = job.settings;
  settings.parameters = parameters;
  TCurFit model;
  model.SetSettings(settings, MarkModified::No);
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

/// Every function at several places and sizes of X; among them X = 0, where powers below 0 have no value.
const Row kRows[] = {
    {"Line", {-3e5, 42}, 0, 1e4},
    {"Polynomial of degree 2", {3, -0.2, 0.004}, -50, 150},
    {"Polynomial of degree 3", {1, 2e6, -3e12, 1e18}, 0, 3e-6},
    {"Polynomial of degree 4", {1e5, -3, 0.2, 0.001, -1e-5}, -100, 200},
    {"Exponential decay", {40, 5000, 230}, 0, 1200, 300},
    {"Exponential decay", {0, 1e-6, 3e-9}, 0, 2e-8},
    {"Exponential decay with two terms", {0.1, 3, 2e-6, 1, 1.5e-5}, 0, 6e-5},
    {"Exponential decay with three terms", {1, 100, 2, 50, 15, 20, 120}, 0, 500},
    {"Exponential growth", {5, 0.3, 12}, 0, 60},
    {"Growth to a limit", {-2, 8, 1e-3}, 0, 5e-3},
    {"Power law", {0.02, -1.7}, 1, 50},
    {"Power law", {3, 0.5}, 0, 1e4},
    {"Power law", {3, 2}, 0, 10},
    {"Gaussian", {-4, 1e-9, 2e-10}, 0, 2e-9},
    {"Gaussian with base line", {900, 5421, 12, 100, 0.03}, 5000, 6000},
    {"Gaussian", {7, 31, 0.4}, 0, 100, 6000},  // a peak in points that are too many to try each
    {"Lorentzian", {-2e-3, 0.31, 0.004}, 0.25, 0.4},
    {"Lorentzian with base line", {3e4, 632.8, 0.02, 1e3, -1}, 632.5, 633.1},
    {"Pseudo-Voigt", {70, 1250, 31, 0.3}, 1000, 1500},
    {"Pseudo-Voigt with base line", {5, -3, 0.8, 0.6, 2, -0.1}, -10, 10},
    {"Voigt", {10, 8, 0.6, 0.4}, 0, 20},
    {"Voigt with base line", {90, -40, 3, 2, 5, 0.1}, -100, 0},
    {"Two Gaussians", {10, 620, 15, 6, 700, 25}, 500, 900},
    {"Two Gaussians with base line", {4, 2, 0.3, 2, 3.5, 0.4, 1, 0.1}, 0, 6},
    {"Two Lorentzians", {10, -2e-3, 3e-4, 6, 1e-3, 2e-4}, -5e-3, 5e-3},
    {"Two Lorentzians with base line", {40, 1590, 12, 60, 1350, 20, 5, 0.002}, 1100, 1800},
    {"Three Gaussians", {5, 10, 1, 8, 20, 2, 3, 30, 1.5}, 0, 40},
    {"Three Gaussians with base line", {5, 10, 1, 8, 20, 2, 3, 30, 1.5, 1, 0.05}, 0, 40},
    {"Three Lorentzians", {50, 110, 4, 80, 150, 6, 30, 190, 5}, 80, 220},
    {"Three Lorentzians with base line", {50, 110, 4, 80, 150, 6, 30, 190, 5, 9, 0.1}, 80, 220},
    {"Logistic", {1e6, 0.4, 31}, 0, 60},
    {"Boltzmann", {-70, 35, -28, 4.2}, -90, 50},
    {"Damped oscillation", {3, 1.5, 0.08, 0.0125, 0.7}, 0, 0.2},
    {"Michaelis-Menten", {3.2e-4, 0.07}, 0, 1},
    {"Michaelis-Menten", {12, 300}, 0, 5000, 12},
    {"Hill", {88, 140, 2.6}, 1, 900},
    {"Hill", {10, 4, 9}, 0, 10, 31},
    {"Hill", {10, 5.5, 300}, 1, 10, 10},  // a step: A*x^n is soon beyond all numbers
    {"Hill", {2, 3e-6, 1.4}, 0, 2e-5, 1000},
    {"Arrhenius", {3e11, 62000}, 270, 380},
};

TEST(StartValues, LeadEveryReadyMadeFunctionToItsLeastSquares) {
  std::set<std::string> tried;
  for (const Row& row : kRows) {
    tried.insert(row.function);
    const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                       row.function + (" from " + std::to_string(row.first)));
    FitJob job = JobOf(row);
    const auto guess = GuessStart(job);
    ASSERT_TRUE(guess);
    EXPECT_LT(SumOfSquares(job, *guess), 0.15 * Scatter(job));
    job.settings.parameters = *guess;
    NoProgress quiet;
    const FitResult found = RunFit(job, quiet);
    for (std::size_t i = 0; i < row.values.size(); ++i)
      job.settings.parameters[i].Value = row.values[i];
    const FitResult least = RunFit(job, quiet);
    EXPECT_LE(found.statistics.sum_of_squares, least.statistics.sum_of_squares * 1.001);
  }
  for (const auto& file : std::filesystem::directory_iterator(testing::SourceFolder() / "TFN")) {
    if (file.path().extension() == ".tfn") {
      EXPECT_TRUE(tried.contains(file.path().stem().string())) << file.path();
    }
  }
}

TEST(StartValues, PointsWithoutAValueWhateverTheParametersAreNamed) {
  FitJob job = JobOf({"Arrhenius", {3e11, 62000}, 270, 380});
  job.x.front() = job.x[1] = 0;
  try {
    GuessStart(job);
    FAIL();
  } catch (const Error& error) {
    EXPECT_THAT(error.what(),
                ::testing::StartsWith("The model has no value at X = 0 and at 1 other "
                                      "point whatever parameters are tried"));
  }
}

/// The points among those tried do not tell that the model has no value for great `a` at the others.
TEST(StartValues, HaveAValueAtPointsThatWereNotAmongThoseTried) {
  FitJob job;
  job.settings.Expression = "b*x+0*sqrt(2-a*c*(x=501))+sqr(a-3)";
  for (const char* name : {"a", "b", "c"}) {
    ParameterSettings& one = job.settings.parameters.emplace_back();
    one.Name = name;
    one.Value = 1;
    one.Vary = *name != 'c';
  }
  for (int i = 0; i < 2000; ++i) {
    job.x.push_back(i);
    job.y.push_back(i % 2 - 0.5);
  }
  job.points_in_range = job.points_chosen = 2000;
  const auto guess = GuessStart(job);
  ASSERT_TRUE(guess);
  EXPECT_TRUE(std::isfinite(SumOfSquares(job, *guess)));
}

TEST(StartValues, NothingIsGuessedWithoutPointsOrVariedParameters) {
  FitJob job = JobOf({"Line", {1, 2}, 0, 1});
  job.settings.parameters[0].Vary = job.settings.parameters[1].Vary = false;
  EXPECT_FALSE(GuessStart(job));
  job = JobOf({"Line", {1, 2}, 0, 1});
  job.x.clear();
  job.y.clear();
  const struct {
    std::int64_t chosen, without_error;
    const char* told;
  } rows[] = {{0, 0, "Nothing was fitted: there is no point between the margins."},
              {5, 5, "Nothing was fitted: none of the points has an error above 0 to weigh it by."},
              {5, 0, "Nothing was fitted: none of the points has a finite Y."}};
  for (const auto& row : rows) {
    job.points_chosen = row.chosen;
    job.points_without_error = row.without_error;
    EXPECT_THAT([&] { GuessStart(job); }, ::testing::ThrowsMessage<Error>(row.told));
  }
}

}  // namespace
}  // namespace tarnwick
