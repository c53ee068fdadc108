#include "fit/minimise/minimise_powell.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "fit/minimise/line_minimisation.h"
#include "fit/minimise/minimise_run.h"

namespace tarnwick {
namespace {

constexpr double kSmallestChange = 1e-25;
constexpr double kFirstLength = 0.1;  // of a direction, in sizes of its parameter

class PowellSearch {
 public:
  PowellSearch(MinimiseRun& run, std::span<const double> start)
      : run_(run),
        line_(run),
        p_(start.begin(), start.end()),
        cycle_start_(p_),
        scratch_(p_),
        value_(run.StartValue()),
        directions_(start.size(), std::vector<double>(start.size(), 0.0)) {
    for (std::size_t i = 0; i < start.size(); ++i) {
      directions_[i][i] = start[i] == 0 ? 1.0 : kFirstLength * std::abs(start[i]);
    }
  }

  double Value() const { return value_; }
  bool Endless() const { return line_.Endless(); }

  // One line minimisation along each direction.
  void GoAlongAllDirections() {
    cycle_start_ = p_;
    cycle_start_value_ = value_;
    greatest_decrease_ = 0;
    for (std::size_t i = 0; i < directions_.size(); ++i) {
      scratch_ = directions_[i];
      const double before = value_;
      value_ = line_.Minimise(p_, value_, scratch_);
      if (line_.Endless()) return;
      if (before - value_ > greatest_decrease_) {
        greatest_decrease_ = before - value_;
        steepest_ = i;
      }
    }
  }

  // Goes along the way that the cycle has travelled and takes it among the directions, where that pays.
  void TryTravelledWay() {
    for (std::size_t i = 0; i < p_.size(); ++i) scratch_[i] = 2 * p_[i] - cycle_start_[i];
    if (!TravelledWayPays(run_.Value(scratch_))) return;
    for (std::size_t i = 0; i < p_.size(); ++i) scratch_[i] = p_[i] - cycle_start_[i];
    value_ = line_.Minimise(p_, value_, scratch_);
    if (line_.Endless()) return;
    directions_[steepest_] = directions_.back();
    directions_.back() = scratch_;
  }

 private:
  // Powell's two conditions (1964, section 4): the function still falls along the way, and neither has one direction brought
  // most of the decrease nor is the minimum along the way near.
  bool TravelledWayPays(double extrapolated) const {
    if (extrapolated >= cycle_start_value_) return false;
    const double decrease = cycle_start_value_ - value_;
    const double curvature = cycle_start_value_ - 2 * value_ + extrapolated;
    const double rest = decrease - greatest_decrease_;
    const double far_decrease = cycle_start_value_ - extrapolated;
    return 2 * curvature * rest * rest < greatest_decrease_ * far_decrease * far_decrease;
  }

  MinimiseRun& run_;
  LineMinimisation line_;
  std::vector<double> p_;
  std::vector<double> cycle_start_;
  std::vector<double> scratch_;
  double value_;
  double cycle_start_value_ = 0;
  double greatest_decrease_ = 0;
  std::size_t steepest_ = 0;
  std::vector<std::vector<double>> directions_;
};

}  // namespace

MinimiseOutcome MinimisePowell(const ScalarObjective& objective, std::span<const double> start,
                               const MinimiseOptions& options, Progress& progress) {
  MinimiseRun run(objective, start, options, progress);
  if (run.Refused()) return run.Refusal();
  PowellSearch search(run, start);
  while (run.Iterations() < options.max_iterations) {
    if (!run.BeginIteration()) return run.FinishCancelled();
    const double before = search.Value();
    search.GoAlongAllDirections();
    if (search.Endless()) return run.FinishEndless();
    if (ChangeIsSmall(before, search.Value(), options.tolerance, kSmallestChange)) {
      return run.FinishByTest("an iteration changed the sum of squares by less than Tolerance");
    }
    search.TryTravelledWay();
    if (search.Endless()) return run.FinishEndless();
  }
  return run.FinishAtIterationLimit();
}

}  // namespace tarnwick
