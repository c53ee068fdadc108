#include "fit/minimise/absent_terms.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "fit/judge/distributions.h"
#include "fit/minimise/minimise_newton.h"
#include "fit/residuals/held_problem.h"

namespace tarnwick {
namespace {

/// Farther from 0 than so many of its errors, a parameter is not absent.
constexpr double kFar = 10;
/// Chance makes such a term more often than that.
constexpr double kLevel = 0.2;
/// Of five normal deviations: what is as rare at its own place is there, however many places there are.
constexpr double kFiveDeviations = 5.7e-7;
/// Fewer degrees of freedom tell nothing of the scatter, which the verdict says by itself.
constexpr std::int64_t kFewestFree = 4;
constexpr std::int32_t kMostIterations = 50;
/// Residuals below this share of Y are rounding.
constexpr double kRounding = 1e-12;

/// The indices of what acts through parameter `i` alone.
std::vector<std::int32_t> Through(LeastSquaresProblem& problem, std::vector<double> values,
                                  std::size_t i) {
  values[i] = 0;
  const ReducedJacobian gone = problem.Reduce(values, Reduction::Orthogonal);
  std::vector<std::int32_t> through;
  if (!std::isfinite(gone.sum_of_squares) || gone.undefined > 0 || !gone.r.allFinite())
    return through;
  for (Eigen::Index j = 0; j < gone.r.cols(); ++j) {
    if (static_cast<std::size_t>(j) != i && gone.r.col(j).isZero(0))
      through.push_back(static_cast<std::int32_t>(j));
  }
  return through;
}

/// The sum of squares of the fit without the term; nothing where there is none.
std::optional<double> Without(LeastSquaresProblem& problem, std::vector<double> values,
                              const AbsentTerm& term, Progress& progress) {
  std::vector<bool> held(values.size(), false);
  held[static_cast<std::size_t>(term.parameter)] = true;
  for (const std::int32_t j : term.through) held[static_cast<std::size_t>(j)] = true;
  values[static_cast<std::size_t>(term.parameter)] = 0;
  HeldProblem rest(problem, held);
  MinimiseOptions options;
  options.max_iterations = kMostIterations;
  const MinimiseOutcome outcome = MinimiseNewton(rest, values, options, progress).outcome;
  if (Failed(outcome.why) || outcome.why == StopReason::Cancelled) return std::nullopt;
  return outcome.value;
}

/// Measures what the term gains; true where that may be chance.
bool MayBeChance(double without, const FitStatistics& statistics, double rounding,
                 AbsentTerm& term) {
  const auto added = static_cast<std::int64_t>(term.through.size()) + 1;
  const std::int64_t free = statistics.degrees_of_freedom;
  const double gain = std::max(without - statistics.sum_of_squares, 0.0);
  term.gain = statistics.sum_of_squares > 0 ? gain / statistics.sum_of_squares : 0;
  double here = 0;
  if (statistics.weighting.errors == FitErrors::Absolute) {
    here = ChiSquaredProbability(gain, added);
  } else {
    const double variance =
        std::max(statistics.sum_of_squares, rounding) / static_cast<double>(free);
    here = VarianceRatioProbability(gain / static_cast<double>(added) / variance, added, free);
  }
  term.chance = std::min(1.0, here * static_cast<double>(statistics.points));
  return term.chance > kLevel && here > kFiveDeviations;
}

}  // namespace

std::vector<AbsentTerm> FindAbsentTerms(LeastSquaresProblem& problem,
                                        std::span<const double> values,
                                        const FitStatistics& statistics, Progress& progress) {
  std::vector<AbsentTerm> absent;
  if (statistics.weighting.errors != FitErrors::Absolute &&
      statistics.degrees_of_freedom < kFewestFree)
    return absent;
  const std::vector<double> p(values.begin(), values.end());
  const double length = kRounding * problem.NormOfY();
  std::vector<std::vector<std::int32_t>> asked;
  for (std::size_t i = 0; i < p.size(); ++i) {
    const ParameterRange& range = problem.Ranges()[i];
    const double error = statistics.standard_errors.at(i);
    if (!(std::abs(p[i]) <= kFar * error) || range.low > 0 || range.high < 0) continue;
    AbsentTerm term{static_cast<std::int32_t>(i), Through(problem, p, i)};
    if (term.through.empty()) continue;
    std::vector<std::int32_t> whole = term.through;
    whole.push_back(term.parameter);
    std::ranges::sort(whole);
    if (std::ranges::find(asked, whole) != asked.end()) continue;
    asked.push_back(whole);
    const std::optional<double> without = Without(problem, p, term, progress);
    if (without && MayBeChance(*without, statistics, length * length, term))
      absent.push_back(std::move(term));
  }
  return absent;
}

}  // namespace tarnwick
