#include "extra_term.h"

#include <Eigen/QR>
#include <algorithm>
#include <cmath>

#include "chance.h"
#include "fit/judge/fit_findings.h"
#include "scene.h"

namespace tarnwick::bench {
namespace {

using enum Meaning;

const TermTrial kTrials[] = {
    {{"two gaussians",
      "a*exp(0-((x-b)/c)^2/2)+e*exp(0-((x-f)/g)^2/2)+d",
      {{"a", 4, 10, Height},
       {"b", 2, 4, Place},
       {"c", 0.5, 0.8, Size},
       {"e", 1, 5, Height},
       {"f", 5, 8, Place},
       {"g", 0.5, 0.8, Size},
       {"d", 0, 2}}},
     {{"e", "f", "g"}, {"a", "b", "c"}}},
    {{"gaussian on a ramp",
      "a*exp(0-((x-b)/c)^2/2)+d*x+e",
      {{"a", 1, 5, Height}, {"b", 3, 7, Place}, {"c", 0.5, 1.5, Size}, {"d", 0.3, 1}, {"e", 0, 2}}},
     {{"a", "b", "c"}}},
    {{"two lorentzians",
      "a/(1+((x-b)/c)^2)+e/(1+((x-f)/g)^2)+d",
      {{"a", 4, 10, Height},
       {"b", 2, 4, Place},
       {"c", 0.4, 0.7, Size},
       {"e", 1, 5, Height},
       {"f", 6, 8, Place},
       {"g", 0.4, 0.7, Size},
       {"d", 0, 2}}},
     {{"e", "f", "g"}, {"a", "b", "c"}}},
    {{"two decays",
      "a*exp(-x/t)+b*exp(-x/u)+c",
      {{"a", 3, 10, Height},
       {"t", 2, 4, Size},
       {"b", 1, 6, Height},
       {"u", 0.3, 0.8, Size},
       {"c", 0, 2}}},
     {{"b", "u"}, {"a", "t"}}},
    {{"sine on a decay",
      "a*exp(-x/t)+c+b*sin(2*pi*x/P+f)",
      {{"a", 3, 10, Height},
       {"t", 1, 4, Size},
       {"c", 0, 2},
       {"b", 1, 3, Height},
       {"P", 1.5, 5, Size},
       {"f", -1.5, 1.5, Place}}},
     {{"b", "P", "f"}, {"a", "t"}}},
};

std::size_t PlaceOf(const TermTrial& trial, const std::string& name) {
  const auto& all = trial.family.parameters;
  return static_cast<std::size_t>(std::ranges::find(all, name, &DrawnParameter::name) -
                                  all.begin());
}

std::size_t HeightOf(const TermTrial& trial) {
  return PlaceOf(trial, trial.terms.front().front());
}

/// The part of the first term that no step of the other parameters makes, in the length of the errors, for a term of height 1.
double UnitOf(const TermTrial& trial, const Scene& scene) {
  Numbers without = scene.parameters;
  without[HeightOf(trial)] = 0;
  Numbers with = without;
  with[HeightOf(trial)] = 1;
  const Numbers rest = Curve(trial.family, without, scene.x);
  const Numbers whole = Curve(trial.family, with, scene.x);
  Eigen::VectorXd term(static_cast<Eigen::Index>(rest.size()));
  for (std::size_t i = 0; i < rest.size(); ++i)
    term(static_cast<Eigen::Index>(i)) = whole[i] - rest[i];
  Eigen::MatrixXd jacobian = JacobianOf(trial.family, without, scene.x);
  jacobian.col(static_cast<Eigen::Index>(HeightOf(trial))).setZero();
  const auto solver = jacobian.completeOrthogonalDecomposition();
  return (term - jacobian * solver.solve(term)).norm() / scene.sigma;
}

double SumOfSquares(const Numbers& some, const Numbers& others) {
  double sum = 0;
  for (std::size_t i = 0; i < some.size(); ++i) sum += std::pow(some[i] - others[i], 2);
  return sum;
}

/// How far the truth is from the nearest curve without one of its terms.
double SignificanceOf(const TermTrial& trial, const Scene& scene) {
  Scene exact = scene;
  exact.y = scene.clean;
  double least = HUGE_VAL;
  for (const std::vector<std::string>& term : trial.terms) {
    Numbers start = scene.parameters;
    start[PlaceOf(trial, term.front())] = 0;
    const FitResult fit = FitWithout(trial.family, term, start, exact);
    least = std::min(least, std::sqrt(fit.outcome.value) / scene.sigma);
  }
  return least;
}

}  // namespace

std::span<const TermTrial> AllTermTrials() {
  return kTrials;
}

TermFit SimulateTerm(const TermTrial& trial, const Measurement& measurement,
                     std::optional<double> height) {
  Chance chance(measurement.seed);
  Scene scene;
  scene.parameters = DrawParameters(trial.family, chance);
  const Numbers near = scene.parameters;
  double& amplitude = scene.parameters[HeightOf(trial)];
  amplitude = 0;
  scene.x = DrawX(measurement.points, trial.family.first_x, chance);
  scene.sigma = measurement.noise * RangeOf(Curve(trial.family, scene.parameters, scene.x));
  if (height) amplitude = *height / UnitOf(trial, scene);
  scene.clean = scene.y = Curve(trial.family, scene.parameters, scene.x);
  scene.range = RangeOf(scene.clean);
  for (double& y : scene.y) y += scene.sigma * chance.Normal();
  TermFit fit;
  if (height) fit.significance = SignificanceOf(trial, scene);
  fit.result = FitScene(trial.family, height ? scene.parameters : near, scene, chance);
  fit.said = SaidOf(fit.result.verdict);
  fit.unfinished = !HasConverged(fit.result);
  fit.told_absent = !fit.result.absent.empty();
  const Numbers found = Curve(trial.family, fit.result.values, scene.x);
  fit.found = SumOfSquares(found, scene.y) <= SumOfSquares(scene.clean, scene.y);
  return fit;
}

}  // namespace tarnwick::bench
