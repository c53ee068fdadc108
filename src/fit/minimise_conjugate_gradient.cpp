#include "fit/minimise_conjugate_gradient.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "fit/line_minimisation.h"
#include "fit/minimise_run.h"

namespace tarnwick {
namespace {

constexpr double kSmallestChange = 1e-10;

// Balances rounding (eps / h) against the third derivative (h^2) of a central difference.
const double kRelativeDifferenceStep = std::cbrt(std::numeric_limits<double>::epsilon());

class NumericalGradient {
 public:
  NumericalGradient(MinimiseRun& run, std::span<const double> start)
      : run_(run), start_(start), trial_(start.size()) {}

  // Writes the gradient at `p`, where the objective is `value`.
  void At(std::span<const double> p, double value, std::span<double> gradient) {
    std::ranges::copy(p, trial_.begin());
    for (std::size_t i = 0; i < p.size(); ++i) gradient[i] = Derivative(p[i], value, i);
  }

 private:
  double Derivative(double at, double value, std::size_t i) {
    const double scale = std::max(std::abs(at), std::abs(start_[i]));
    const double step = kRelativeDifferenceStep * (scale == 0 ? 1.0 : scale);
    const auto side = [&](double offset) {
      trial_[i] = at + offset;
      const double there = run_.Value(trial_);
      return std::isfinite(there) ? Side{trial_[i], there} : Side{at, value};
    };
    const Side above = side(step);
    const Side below = side(-step);
    trial_[i] = at;
    // Divided by what the steps really are after rounding.
    return above.p == below.p ? 0.0 : (above.value - below.value) / (above.p - below.p);
  }

  struct Side {
    double p;
    double value;
  };

  MinimiseRun& run_;
  std::span<const double> start_;
  std::vector<double> trial_;
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

// Where the gradient is not 0 and yet nothing is lower, the guards of the line search may have been too coarse for it.
MinimiseOutcome FinishSmallChange(MinimiseRun& run, double before, double value,
                                  std::span<const double> g) {
  if (value < before || SumOfSquares(g) == 0) {
    return run.FinishByTest(
        "a line minimisation changed the sum of squares by less than Tolerance");
  }
  return run.Finish(StopReason::NoFurtherDescent,
                    "the line minimisation found nothing lower, although the gradient is not 0");
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
      return FinishSmallChange(run, before, value, g);
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
