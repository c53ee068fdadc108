#include "fit/minimise/minimise_run.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/undefined.h"

namespace tarnwick {
namespace {

bool AllFinite(std::span<const double> values) {
  return std::ranges::all_of(values, [](double value) { return std::isfinite(value); });
}

}  // namespace

MinimiseRun::MinimiseRun(const ScalarObjective& objective, std::span<const double> start,
                         const MinimiseOptions& options, Progress& progress)
    : objective_(objective),
      options_(options),
      progress_(progress),
      start_(start.begin(), start.end()) {
  outcome_.p = start_;
  refused_ = true;
  if (start.empty()) {
    outcome_.why = StopReason::NothingVaried;
    outcome_.stop_test = "no parameter is varied";
    return;
  }
  if (start.size() > static_cast<std::size_t>(kMaxVariedParameters)) {
    outcome_.why = StopReason::TooManyParameters;
    outcome_.message = kTooManyParametersText;
    outcome_.stop_test = "too many parameters are varied";
    return;
  }
  outcome_.value = std::numeric_limits<double>::infinity();
  outcome_.start_value = Value(start);
  outcome_.value = outcome_.start_value;
  if (!std::isfinite(outcome_.start_value)) {
    outcome_.start_value = outcome_.value = kUndefined;
    outcome_.why = StopReason::UndefinedAtStart;
    outcome_.message = "The sum of squares has no value at the start.";
    outcome_.stop_test = "the sum of squares has no value at the start";
    return;
  }
  refused_ = false;
}

double MinimiseRun::Value(std::span<const double> p) {
  if (!AllFinite(p)) return std::numeric_limits<double>::infinity();
  ++outcome_.evaluations;
  const double value = objective_(p);
  if (!std::isfinite(value)) return std::numeric_limits<double>::infinity();
  if (value < outcome_.value) {
    outcome_.value = value;
    std::ranges::copy(p, outcome_.p.begin());
  }
  return value;
}

bool MinimiseRun::BeginIteration() {
  if (options_.every_step) options_.every_step(outcome_.p);
  if (!progress_.Advance(outcome_.iterations) || progress_.Cancelled()) return false;
  ++outcome_.iterations;
  return true;
}

MinimiseOutcome MinimiseRun::Finish(StopReason why, std::string stop_test) {
  outcome_.why = why;
  outcome_.stop_test = std::move(stop_test);
  outcome_.changed = outcome_.p != start_;
  return std::move(outcome_);
}

MinimiseOutcome MinimiseRun::FinishByTest(std::string stop_test) {
  if (Improved()) return Finish(StopReason::Converged, std::move(stop_test));
  return Finish(StopReason::NoFurtherDescent,
                "no step of the method leads below the start (" + stop_test + ")");
}

MinimiseOutcome MinimiseRun::FinishCancelled() {
  return Finish(StopReason::Cancelled, "cancelled");
}

MinimiseOutcome MinimiseRun::FinishAtIterationLimit() {
  return Finish(StopReason::IterationLimit, "the greatest number of iterations was reached");
}

MinimiseOutcome MinimiseRun::FinishEndless() {
  return Finish(StopReason::NoFurtherDescent, "the sum of squares falls without end along a line");
}

bool ChangeIsSmall(double before, double after, double tolerance, double floor) {
  // Halved on both sides: the doubled difference may overflow.
  return std::abs(before - after) <=
         tolerance * (0.5 * std::abs(before) + 0.5 * std::abs(after) + 0.5 * floor);
}

}  // namespace tarnwick
