// Weighted fits whose answers are known: York's line in closed form, and a decay of counts simulated again and again. For the
// tests of fits and the page of their accuracy.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "analysis/fits/fit_job.h"

namespace tarnwick {

/// Parameters a, b, c ... varied from `start`, every point.
inline FitJob WeightedJob(const std::string& expression, const std::vector<double>& start,
                          std::vector<double> x, std::vector<double> y, FitProcType method) {
  FitJob job;
  job.settings.Expression = expression;
  job.settings.ProcType = method;
  for (std::size_t i = 0; i < start.size(); ++i) {
    ParameterSettings& one = job.settings.parameters.emplace_back();
    one.Name = std::string(1, static_cast<char>('a' + i));
    one.Value = start[i];
    one.Vary = true;
  }
  job.points_in_range = job.points_chosen = static_cast<std::int64_t>(x.size());
  job.x = std::move(x);
  job.y = std::move(y);
  job.options.finish = FinishingStep::Yes;
  return job;
}

/// Pearson's points with the weights of Y that York gave them (Can. J. Phys. 44 (1966), 1079).
inline FitJob York(FitProcType method = FitProcType::cfp_Newton) {
  FitJob job = WeightedJob("a+b*x", {1, 1}, {0, 0.9, 1.8, 2.6, 3.3, 4.4, 5.2, 6.1, 6.5, 7.4},
                           {5.9, 5.4, 4.4, 4.6, 3.5, 3.7, 2.8, 2.8, 2.4, 1.5}, method);
  for (const double w : {1.0, 1.8, 4.0, 8.0, 20.0, 20.0, 70.0, 70.0, 100.0, 500.0})
    job.errors.push_back(1 / std::sqrt(w));
  return job;
}

/// Intercept, slope, their errors and chi squared of a line weighted by absolute errors, by the textbook's sums.
struct WeightedLine {
  explicit WeightedLine(const FitJob& job) {
    long double s = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t i = 0; i < job.x.size(); ++i) {
      const long double w = 1 / (static_cast<long double>(job.errors[i]) * job.errors[i]);
      s += w, sx += w * job.x[i], sy += w * job.y[i];
      sxx += w * job.x[i] * job.x[i], sxy += w * job.x[i] * job.y[i];
    }
    const long double d = s * sxx - sx * sx;
    values = {static_cast<double>((sxx * sy - sx * sxy) / d),
              static_cast<double>((s * sxy - sx * sy) / d)};
    errors = {static_cast<double>(std::sqrt(sxx / d)), static_cast<double>(std::sqrt(s / d))};
    for (std::size_t i = 0; i < job.x.size(); ++i) {
      const double r = (job.y[i] - values[0] - values[1] * job.x[i]) / job.errors[i];
      chi_squared += r * r;
    }
  }
  std::vector<double> values, errors;
  double chi_squared = 0;
};

/// What the simulated decays were made of: a, b, c of a*exp(-x/b)+c.
inline const std::vector<double>& DecayTruth() {
  static const std::vector<double> truth = {50, 3, 4};
  return truth;
}
inline constexpr int kSimulatedDecays = 300;

/// Counts at 60 X, the same for a number in every run; weights of counts.
inline FitJob CountedDecay(int number, FitProcType method = FitProcType::cfp_Newton) {
  std::mt19937 random(static_cast<std::uint32_t>(number));
  const std::vector<double>& truth = DecayTruth();
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 60; ++i) {
    x.push_back(0.25 * i);
    const double mean = truth[0] * std::exp(-x.back() / truth[1]) + truth[2];
    y.push_back(std::poisson_distribution<int>(mean)(random));
  }
  FitJob job = WeightedJob("a*exp(-x/b)+c", {30, 2, 1}, std::move(x), std::move(y), method);
  job.settings.weighting.weights = FitWeights::Counts;
  return job;
}

}  // namespace tarnwick
