#include "simulated_fit.h"

#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <vector>

#include "chance.h"
#include "fit/judge/fit_findings.h"
#include "scene.h"

namespace tarnwick::bench {
namespace {

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
  const Eigen::MatrixXd jacobian = JacobianOf(family, scene.parameters, scene.x);
  const Eigen::MatrixXd inverse =
      (jacobian.transpose() * jacobian).completeOrthogonalDecomposition().pseudoInverse();
  double worst = 0;
  for (Eigen::Index j = 0; j < jacobian.cols(); ++j) {
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

}  // namespace

Said SaidOf(const FitVerdict& verdict) {
  if (verdict.trustworthy) return Said::Trusted;
  return verdict.untested ? Said::Untested : Said::Doubted;
}

SimulatedFit SimulateFit(const Trial& trial, const Measurement& measurement) {
  Chance chance(measurement.seed);
  const Scene scene = DrawScene(trial, measurement, chance);
  SimulatedFit fit;
  fit.trial = trial;
  fit.measurement = measurement;
  fit.spoiled = scene.spoiled.has_value();
  const Numbers near =
      trial.IsRightModel() ? scene.parameters : DrawParameters(*trial.fitted, chance);
  fit.result = FitScene(*trial.fitted, near, scene, chance);
  fit.truth = TruthOf(trial, scene, fit.result);
  fit.said = SaidOf(fit.result.verdict);
  fit.unfinished = !HasConverged(fit.result);
  return fit;
}

}  // namespace tarnwick::bench
