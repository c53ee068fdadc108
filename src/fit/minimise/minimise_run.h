// The bookkeeping that all minimisers of a scalar objective share: it refuses what cannot be minimised, counts, keeps the
// best point met and writes the outcome. Knows no method.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "fit/minimise.h"

namespace tarnwick {

class MinimiseRun {
 public:
  /// Evaluates the objective once, at `start`, unless there is nothing to vary or too much. All arguments are borrowed.
  MinimiseRun(const ScalarObjective& objective, std::span<const double> start,
              const MinimiseOptions& options, Progress& progress);

  /// True when the run must not begin; Refusal() is then its outcome.
  bool Refused() const { return refused_; }
  MinimiseOutcome Refusal() const { return outcome_; }

  std::size_t ParameterCount() const { return outcome_.p.size(); }
  double StartValue() const { return outcome_.start_value; }
  std::int32_t Iterations() const { return outcome_.iterations; }
  std::int64_t Evaluations() const { return outcome_.evaluations; }
  /// True when something lower than the start was met.
  bool Improved() const { return outcome_.value < outcome_.start_value; }

  /// The objective at `p`; +infinity, worse than anything, where it or a coordinate is undefined or infinite.
  double Value(std::span<const double> p);

  /// The top of an iteration: shows the best parameters, then asks whether to stop. False: cancelled, do not iterate.
  bool BeginIteration();

  /// The outcome with the best point met, which stopped for `why` as `stop_test` says.
  MinimiseOutcome Finish(StopReason why, std::string stop_test);
  /// The method's stop test, named by `stop_test`, held: converged, unless no step ever led below the start. Where nothing
  /// was gained, the test cannot tell a minimum from a start that the method is unable to leave.
  MinimiseOutcome FinishByTest(std::string stop_test);
  MinimiseOutcome FinishCancelled();
  MinimiseOutcome FinishAtIterationLimit();
  /// Along some line there is descent but no minimum.
  MinimiseOutcome FinishEndless();

 private:
  const ScalarObjective& objective_;
  const MinimiseOptions& options_;
  Progress& progress_;
  std::vector<double> start_;
  MinimiseOutcome outcome_;
  bool refused_ = false;
};

/// 2 |before - after| <= tolerance (|before| + |after| + floor): the last iteration changed the objective by next to nothing.
bool ChangeIsSmall(double before, double after, double tolerance, double floor);

}  // namespace tarnwick
