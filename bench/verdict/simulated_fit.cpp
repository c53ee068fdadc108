#include "simulated_fit.h"

#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "analysis/fits/fit_run.h"
#include "base/progress.h"
#include "chance.h"
#include "fit/judge/fit_findings.h"
#include "fit/model/curve_fit.h"

namespace tarnwick::bench {
namespace {

using Numbers = std::vector<double>;

constexpr double kLastX = 10;
/// Places of a curve between two of its points.
constexpr int kBetween = 8;
/// Of measurements without errors, relative to the range of the curve.
constexpr double kExact = 1e-5;
constexpr double kExactOfOther = 1e-3;
/// A parameter whose error is a greater part of its size is not there to be trusted.
constexpr double kPosed = 0.25;
/// A true curve that leaves its points by more than this part of its range is not shown by them.
constexpr double kHeld = 0.38;
constexpr double kFarOff = 0.5;

FitSettings SettingsOf(const Family& family, const Numbers& values, FitProcType method) {
  FitSettings settings;
  settings.Expression = family.expression;
  settings.NPoints = 1'000'000;
  settings.ProcType = method;
  for (std::size_t i = 0; i < values.size(); ++i) {
    ParameterSettings parameter;
    parameter.Name = family.parameters[i].name;
    parameter.Value = values[i];
    parameter.Vary = true;
    settings.parameters.push_back(parameter);
  }
  return settings;
}

Numbers Curve(const Family& family, const Numbers& values, const Numbers& x) {
  TCurFit model;
  model.SetSettings(SettingsOf(family, values, FitProcType::cfp_Newton), false);
  model.Prepare();
  Numbers y;
  for (const double one : x) y.push_back(model.Value(one));
  return y;
}

/// Most experiments are evenly spaced, some by equal ratios, some anyhow.
Numbers DrawX(int points, double first, Chance& chance) {
  const double kind = chance.Uniform();
  Numbers x;
  for (int i = 0; i < points; ++i) {
    const double share = static_cast<double>(i) / (points - 1);
    const double least = std::max(first, 0.1);
    if (kind < 0.6) {
      x.push_back(first + (kLastX - first) * share);
    } else if (kind < 0.7) {
      x.push_back(least * std::pow(kLastX / least, share));
    } else {
      x.push_back(chance.Between(first, kLastX));
    }
  }
  std::ranges::sort(x);
  return x;
}

Numbers DrawParameters(const Family& family, Chance& chance) {
  Numbers values;
  for (const DrawnParameter& one : family.parameters)
    values.push_back(chance.Between(one.low, one.high));
  return values;
}

/// As users start: from near, within a factor of three, of ten with a wrong sign at times, from ones.
Numbers DrawStart(const Numbers& near, Chance& chance) {
  const double how = chance.Uniform();
  Numbers start;
  for (const double value : near) {
    if (how < 0.35) {
      start.push_back(value * std::exp(0.1 * chance.Normal()));
    } else if (how < 0.65) {
      start.push_back(value * std::pow(3, chance.Between(-1, 1)));
    } else if (how < 0.85) {
      start.push_back(value * std::pow(10, chance.Between(-1, 1)) *
                      (chance.Happens(0.15) ? -1 : 1));
    } else {
      start.push_back(1);
    }
  }
  return start;
}

FitProcType DrawMethod(Chance& chance) {
  const double which = chance.Uniform();
  if (which < 1.0 / 6) return FitProcType::cfp_Powell;
  return which < 1.0 / 3 ? FitProcType::cfp_SimplexPowell : FitProcType::cfp_Newton;
}

double RangeOf(const Numbers& values) {
  const auto [low, high] = std::ranges::minmax(values);
  return high - low;
}

/// What is measured, and what would have been without errors.
struct Scene {
  Numbers parameters;
  Numbers x;
  Numbers clean;
  Numbers y;
  double range = 0;
  double sigma = 0;
  std::optional<std::size_t> spoiled;
};

Scene DrawScene(const Trial& trial, const Measurement& measurement, Chance& chance) {
  Scene scene;
  scene.parameters = DrawParameters(*trial.truth, chance);
  scene.x =
      DrawX(measurement.points, std::max(trial.truth->first_x, trial.fitted->first_x), chance);
  scene.clean = scene.y = Curve(*trial.truth, scene.parameters, scene.x);
  scene.range = RangeOf(scene.clean);
  scene.sigma = measurement.noise * scene.range;
  for (double& y : scene.y) y += scene.sigma * chance.Normal();
  if (scene.sigma > 0 && chance.Happens(0.06)) {
    scene.spoiled = static_cast<std::size_t>(chance.Uniform() * measurement.points);
    scene.y[*scene.spoiled] +=
        (chance.Happens(0.5) ? -1 : 1) * scene.sigma * chance.Between(20, 50);
  }
  return scene;
}

Numbers BetweenPoints(const Numbers& x) {
  Numbers dense;
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    for (int part = 1; part < kBetween; ++part)
      dense.push_back(x[i] + (x[i + 1] - x[i]) * part / kBetween);
  }
  return dense;
}

/// How far the true curve leaves, between two points, what it is at both, over its range.
double OwnSwing(const Numbers& clean, const Numbers& dense, double range) {
  double greatest = 0;
  for (std::size_t i = 0; i < dense.size(); ++i) {
    const auto [low, high] = std::minmax(clean[i / (kBetween - 1)], clean[i / (kBetween - 1) + 1]);
    greatest = std::max({greatest, dense[i] - high, low - dense[i]});
  }
  return greatest / range;
}

/// True where a slower curve goes through the same points: at even distances one turns from point to point at most.
bool IsOutrun(const Numbers& x, const Numbers& clean, const Numbers& dense) {
  const double step = (x.back() - x.front()) / static_cast<double>(x.size() - 1);
  std::size_t turns = 0;
  double before = 0;
  double last = clean.front();
  const auto take = [&](double value) {
    if ((value - last) * before < 0) ++turns;
    before = value - last;
    last = value;
  };
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    if (std::abs(x[i + 1] - x[i] - step) > 0.01 * step) return false;
    for (std::size_t part = 0; part + 1 < kBetween; ++part) take(dense[i * (kBetween - 1) + part]);
    take(clean[i + 1]);
  }
  return turns + 1 >= x.size();
}

/// The greatest error, relative to what its parameter means, of a fit that ends at the truth.
double WorstError(const Family& family, const Scene& scene) {
  const auto n = static_cast<Eigen::Index>(scene.x.size());
  const auto k = static_cast<Eigen::Index>(family.parameters.size());
  Eigen::MatrixXd jacobian(n, k);
  for (Eigen::Index j = 0; j < k; ++j) {
    const auto at = static_cast<std::size_t>(j);
    Numbers up = scene.parameters;
    Numbers down = scene.parameters;
    const double step = 1e-5 * std::max(std::abs(up[at]), 0.01);
    up[at] += step;
    down[at] -= step;
    const Numbers above = Curve(family, up, scene.x);
    const Numbers below = Curve(family, down, scene.x);
    for (Eigen::Index i = 0; i < n; ++i) {
      const auto row = static_cast<std::size_t>(i);
      const double slope = (above[row] - below[row]) / (2 * step);
      jacobian(i, j) = std::isfinite(slope) ? slope : 0;
    }
  }
  const Eigen::MatrixXd inverse =
      (jacobian.transpose() * jacobian).completeOrthogonalDecomposition().pseudoInverse();
  double worst = 0;
  for (Eigen::Index j = 0; j < k; ++j) {
    const DrawnParameter& one = family.parameters[static_cast<std::size_t>(j)];
    const double size = std::abs(scene.parameters[static_cast<std::size_t>(j)]);
    if (one.meaning == Meaning::Level) continue;
    const double error = std::sqrt(std::max(inverse(j, j), 0.0)) * scene.sigma;
    worst = std::max(worst, error / (one.meaning == Meaning::Place ? std::max(size, 0.5) : size));
  }
  return worst;
}

/// The curve found beside the true one.
struct Distance {
  double at_points =
      0;  ///< sum of squares, in errors; without errors the mean deviation over the range
  double between_points = 0;  ///< the greatest deviation over the range
};

Distance DistanceOf(const Scene& scene, const Numbers& found, const Numbers& dense_found,
                    const Numbers& dense_true) {
  double squares = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (i != scene.spoiled) squares += std::pow(found[i] - scene.clean[i], 2);
  }
  Distance distance;
  distance.at_points = scene.sigma > 0
                           ? squares / (scene.sigma * scene.sigma)
                           : std::sqrt(squares / static_cast<double>(found.size())) / scene.range;
  const auto [low, high] = std::ranges::minmax(dense_true);
  const auto [low_point, high_point] = std::ranges::minmax(scene.clean);
  for (std::size_t i = 0; i < dense_true.size(); ++i) {
    const double apart = std::abs(dense_found[i] - dense_true[i]);
    distance.between_points =
        std::max(distance.between_points, std::isfinite(apart) ? apart : HUGE_VAL);
  }
  distance.between_points /= std::max(high, high_point) - std::min(low, low_point);
  return distance;
}

Truth TruthOf(const Trial& trial, const Scene& scene, const FitResult& result) {
  const Numbers dense = BetweenPoints(scene.x);
  const Numbers dense_true = Curve(*trial.truth, scene.parameters, dense);
  const Distance distance = DistanceOf(scene, Curve(*trial.fitted, result.values, scene.x),
                                       Curve(*trial.fitted, result.values, dense), dense_true);
  const auto n = static_cast<double>(scene.x.size());
  if (!trial.IsRightModel()) {
    const bool wrong = distance.at_points > (scene.sigma > 0 ? 36 + 4 * n : kExactOfOther);
    return wrong ? Truth::Wrong : Truth::Between;
  }
  const auto k = static_cast<double>(trial.fitted->parameters.size());
  const bool posed = WorstError(*trial.fitted, scene) < kPosed &&
                     OwnSwing(scene.clean, dense_true, scene.range) < kHeld &&
                     !IsOutrun(scene.x, scene.clean, dense_true);
  const double by_chance = k + 6 * std::sqrt(2 * k) + 8;
  if (distance.at_points > (scene.sigma > 0 ? by_chance : kExact) ||
      (distance.between_points > kFarOff && posed))
    return Truth::Wrong;
  return posed && !scene.spoiled ? Truth::Right : Truth::Between;
}

FitResult Fit(const Trial& trial, const Scene& scene, Chance& chance) {
  FitJob job;
  const Numbers near =
      trial.IsRightModel() ? scene.parameters : DrawParameters(*trial.fitted, chance);
  const Numbers start = DrawStart(near, chance);
  job.settings = SettingsOf(*trial.fitted, start, DrawMethod(chance));
  job.x = scene.x;
  job.y = scene.y;
  job.points_in_range = job.points_chosen = static_cast<std::int64_t>(scene.x.size());
  job.options.threads = 1;
  NoProgress progress;
  return RunFit(job, progress);
}

}  // namespace

SimulatedFit SimulateFit(const Trial& trial, const Measurement& measurement) {
  Chance chance(measurement.seed);
  const Scene scene = DrawScene(trial, measurement, chance);
  SimulatedFit fit;
  fit.trial = trial;
  fit.measurement = measurement;
  fit.spoiled = scene.spoiled.has_value();
  fit.result = Fit(trial, scene, chance);
  fit.truth = TruthOf(trial, scene, fit.result);
  const FitVerdict& verdict = fit.result.verdict;
  fit.said = verdict.trustworthy ? Said::Trusted
             : verdict.untested  ? Said::Untested
                                 : Said::Doubted;
  fit.unfinished = !HasConverged(fit.result);
  return fit;
}

}  // namespace tarnwick::bench
