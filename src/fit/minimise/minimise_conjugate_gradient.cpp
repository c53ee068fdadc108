#include "fit/minimise/minimise_conjugate_gradient.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "fit/minimise/line_minimisation.h"
#include "fit/minimise/minimise_run.h"

namespace tarnwick {
namespace {

constexpr double kSmallestChange = 1e-10;

// Balances rounding (eps / h) against the third derivative (h^2) of a central difference.
const double kRelativeDifferenceStep = std::cbrt(std::numeric_limits<double>::epsilon());

// A promise of more than this many times the tolerance contradicts the stop test.
constexpr double kGreatPromise = 1000;

class NumericalGradient {
 public:
  NumericalGradient(MinimiseRun& run, std::span<const double> start)
      : run_(run), start_(start), trial_(start.size()) {}

  // Writes the gradient at `p`, where the objective is `value`.
  void At(std::span<const double> p, double value, std::span<double> gradient) {
    std::ranges::copy(p, trial_.begin());
    promise_ = 0;
    for (std::size_t i = 0; i < p.size(); ++i) gradient[i] = Derivative({p[i], value}, i);
  }

  // The decrease that a step along the best axis should bring, by the parabola through the points of the last difference.
  double Promise() const { return promise_; }

 private:
  double Derivative(const LinePoint& middle, std::size_t i) {
    const double scale = std::max(std::abs(middle.step), std::abs(start_[i]));
    const double step = kRelativeDifferenceStep * (scale == 0 ? 1.0 : scale);
    const auto side = [&](double offset) {
      trial_[i] = middle.step + offset;
      const LinePoint point{trial_[i], run_.Value(trial_)};
      return std::isfinite(point.value) ? point : middle;
    };
    const LinePoint above = side(step);
    const LinePoint below = side(-step);
    trial_[i] = middle.step;
    KeepPromise(below.value, middle.value, above.value);
    // Divided by what the steps really are after rounding.
    return above.step == below.step ? 0.0 : (above.value - below.value) / (above.step - below.step);
  }

  void KeepPromise(double below, double middle, double above) {
    constexpr double kNoise = 8 * std::numeric_limits<double>::epsilon();
    const double slope = 0.5 * (above - below);
    const double curvature = std::max(above - 2 * middle + below, kNoise * std::abs(middle));
    if (slope != 0) promise_ = std::max(promise_, 0.5 * slope * slope / curvature);
  }

  MinimiseRun& run_;
  std::span<const double> start_;
  std::vector<double> trial_;
  double promise_ = 0;
};

double SumOfSquares(std::span<const double> values) {
  double sum = 0;
  for (const double value : values) sum += value * value;
  return sum;
}

// Polak and Ribiere's share of the old direction; 0, which is steepest descent, when it overflows.
double OldDirectionShare(std::span<const double> negative_old, std::span<const double> gradient) {
  double numerator = 0;
  for (std::size_t i = 0; i < gradient.size(); ++i) {
    numerator += (gradient[i] + negative_old[i]) * gradient[i];
  }
  const double share = numerator / SumOfSquares(negative_old);
  return std::isfinite(share) ? share : 0.0;
}

// A parameter space of very unlike sizes makes steps along the gradient too coarse or too short: the stop test then holds far
// from any minimum.
MinimiseOutcome FinishSmallChange(MinimiseRun& run, double value, double promise,
                                  double tolerance) {
  if (promise > kGreatPromise * tolerance * (std::abs(value) + kSmallestChange)) {
    return run.Finish(StopReason::NoFurtherDescent,
                      "a line minimisation brought next to nothing, although the slope promises "
                      "more");
  }
  return run.FinishByTest("a line minimisation changed the sum of squares by less than Tolerance");
}

}  // namespace

MinimiseOutcome MinimiseConjugateGradient(const ScalarObjective& objective,
                                          std::span<const double> start,
                                          const MinimiseOptions& options, Progress& progress) {
  MinimiseRun run(objective, start, options, progress);
  if (run.Refused()) return run.Refusal();
  const std::size_t n = start.size();
  NumericalGradient gradient_of(run, start);
  LineMinimisation line(run);
  std::vector<double> p(start.begin(), start.end());
  std::vector<double> gradient(n);
  std::vector<double> g(n);  // the negative gradient
  std::vector<double> h(n);  // the conjugate direction
  std::vector<double> travelled(n);
  double value = run.StartValue();

  gradient_of.At(p, value, gradient);
  for (std::size_t i = 0; i < n; ++i) h[i] = g[i] = -gradient[i];
  while (run.Iterations() < options.max_iterations) {
    if (!run.BeginIteration()) return run.FinishCancelled();
    travelled = h;
    const double before = value;
    value = line.Minimise(p, value, travelled);
    if (line.Endless()) return run.FinishEndless();
    if (ChangeIsSmall(before, value, options.tolerance, kSmallestChange)) {
      return FinishSmallChange(run, value, gradient_of.Promise(), options.tolerance);
    }
    gradient_of.At(p, value, gradient);
    if (SumOfSquares(g) == 0) return run.FinishByTest("the gradient is 0");
    const double share = OldDirectionShare(g, gradient);
    for (std::size_t i = 0; i < n; ++i) {
      g[i] = -gradient[i];
      h[i] = g[i] + share * h[i];
    }
  }
  return run.FinishAtIterationLimit();
}

}  // namespace tarnwick
