#include "fit/minimise/minimise_simplex.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "fit/minimise/minimise_powell.h"
#include "fit/minimise/minimise_run.h"

namespace tarnwick {
namespace {

constexpr double kReflection = -1.0;
constexpr double kExpansion = 2.0;
constexpr double kContraction = 0.5;
constexpr double kShrinking = 0.5;

class Simplex {
 public:
  Simplex(MinimiseRun& run, std::span<const double> start, double edge)
      : run_(run),
        vertices_(start.size() + 1, std::vector<double>(start.begin(), start.end())),
        values_(start.size() + 1, run.StartValue()),
        centroid_(start.size()),
        trial_(start.size()) {
    for (std::size_t k = 0; k < start.size(); ++k) {
      vertices_[k + 1][k] += edge;
      if (vertices_[k + 1][k] == start[k]) flat_.push_back(k);
      values_[k + 1] = run.Value(vertices_[k + 1]);
    }
    values_[0] = run.Value(start);
    Rank();
  }

  // Coordinates, from 0, that are the same in all first vertices and stay so for ever.
  std::span<const std::size_t> FlatCoordinates() const { return flat_; }

  bool ValuesAgree(double tolerance) const {
    const double best = values_[best_];
    const double worst = values_[worst_];
    // All vertices at exactly 0 leave no fraction to compare.
    return best == worst
               ? best == 0 || tolerance > 0
               : 2 * std::abs(worst - best) < tolerance * (std::abs(best) + std::abs(worst));
  }

  // One iteration. False when not even shrinking changes a vertex.
  bool Step() {
    const double reflected = TryMove(kReflection);
    if (reflected < values_[best_]) {
      TryMove(kExpansion);
    } else if (!(reflected < values_[next_worst_])) {
      const double before = values_[worst_];
      if (!(TryMove(kContraction) < before) && !Shrink()) return false;
    }
    Rank();
    return true;
  }

 private:
  // Finds the best, the worst and the next-worst vertex.
  void Rank() {
    best_ = 0;
    worst_ = 1;
    next_worst_ = 0;
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (values_[i] < values_[best_]) best_ = i;
      if (values_[i] > values_[worst_]) {
        next_worst_ = std::exchange(worst_, i);
      } else if (i != worst_ && values_[i] > values_[next_worst_]) {
        next_worst_ = i;
      }
    }
  }

  // Moves the worst vertex to `factor` times its distance from the centroid of the others, if the objective is lower there.
  // Answers the value there.
  double TryMove(double factor) {
    const std::size_t n = trial_.size();
    for (std::size_t k = 0; k < n; ++k) {
      double sum = 0;
      for (std::size_t i = 0; i < vertices_.size(); ++i) {
        if (i != worst_) sum += vertices_[i][k];
      }
      centroid_[k] = sum / static_cast<double>(n);
      trial_[k] = centroid_[k] + factor * (vertices_[worst_][k] - centroid_[k]);
    }
    const double value = run_.Value(trial_);
    if (value < values_[worst_]) {
      vertices_[worst_] = trial_;
      values_[worst_] = value;
    }
    return value;
  }

  // Brings every vertex halfway to the best. False when none moves at working precision.
  bool Shrink() {
    bool moved = false;
    const std::vector<double>& best = vertices_[best_];
    for (std::size_t i = 0; i < vertices_.size(); ++i) {
      if (i == best_) continue;
      for (std::size_t k = 0; k < best.size(); ++k) {
        trial_[k] = kShrinking * (vertices_[i][k] + best[k]);
      }
      moved = moved || trial_ != vertices_[i];
      vertices_[i] = trial_;
      values_[i] = run_.Value(trial_);
    }
    return moved;
  }

  MinimiseRun& run_;
  std::vector<std::vector<double>> vertices_;
  std::vector<double> values_;
  std::vector<double> centroid_;
  std::vector<double> trial_;
  std::vector<std::size_t> flat_;
  std::size_t best_{}, worst_{}, next_worst_{};  // told by Rank()
};

std::string FlatText(std::span<const std::size_t> flat) {
  std::string text = "Tolerance is lost in the value of varied parameter";
  for (const std::size_t k : flat) {
    text += (k == flat.front() ? " " : ", ") + std::to_string(k + 1);
  }
  return text + ", which the simplex cannot move";
}

MinimiseOutcome FinishAgreement(MinimiseRun& run, const Simplex& simplex) {
  const std::string test = "the values at the vertices agree within Tolerance";
  if (!simplex.FlatCoordinates().empty()) {
    return run.Finish(StopReason::NoFurtherDescent,
                      test + "; " + FlatText(simplex.FlatCoordinates()));
  }
  if (run.Iterations() == 0) {
    return run.Finish(StopReason::NoFurtherDescent, test + " already in the first simplex");
  }
  return run.FinishByTest(test);
}

}  // namespace

MinimiseOutcome MinimiseSimplex(const ScalarObjective& objective, std::span<const double> start,
                                const MinimiseOptions& options, Progress& progress) {
  MinimiseRun run(objective, start, options, progress);
  if (run.Refused()) return run.Refusal();
  const std::int64_t most_evaluations =
      std::int64_t{options.max_iterations} * static_cast<std::int64_t>(start.size());
  Simplex simplex(run, start, options.tolerance);
  while (!simplex.ValuesAgree(options.tolerance)) {
    if (run.Evaluations() >= most_evaluations) {
      return run.Finish(StopReason::IterationLimit,
                        "IterMax evaluations per varied parameter were reached");
    }
    if (!run.BeginIteration()) return run.FinishCancelled();
    if (!simplex.Step()) {
      return run.Finish(StopReason::NoFurtherDescent,
                        "the simplex has shrunk to a point before its values agree");
    }
  }
  return FinishAgreement(run, simplex);
}

MinimiseOutcome MinimiseSimplexPowell(const ScalarObjective& objective,
                                      std::span<const double> start, const MinimiseOptions& options,
                                      Progress& progress) {
  MinimiseOutcome first = MinimiseSimplex(objective, start, options, progress);
  if (Failed(first.why) || first.why == StopReason::NothingVaried ||
      first.why == StopReason::Cancelled) {
    return first;
  }
  MinimiseOutcome both = MinimisePowell(objective, first.p, options, progress);
  both.stop_test = "simplex: " + first.stop_test + "; Powell: " + both.stop_test;
  both.iterations += first.iterations;
  both.evaluations += first.evaluations;
  both.start_value = first.start_value;
  both.changed = !std::ranges::equal(both.p, start);
  return both;
}

}  // namespace tarnwick
