#include "fit/minimise/bounded_step.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tarnwick {
namespace {

using Eigen::Index;
using Eigen::VectorXd;

constexpr double kRounding = 4 * std::numeric_limits<double>::epsilon();

double SizeOf(const ParameterRange& range, double value) {
  double size = std::abs(value);
  if (std::isfinite(range.low)) size = std::max(size, std::abs(range.low));
  if (std::isfinite(range.high)) size = std::max(size, std::abs(range.high));
  return size > 0 ? size : 1;
}

/// The bound that lies nearer.
double NearerWall(const ParameterRange& range, double value) {
  return value - range.low < range.high - value ? range.low : range.high;
}

}  // namespace

Box::Box(std::span<const ParameterRange> ranges) : ranges_(ranges.begin(), ranges.end()) {
  bounds_ = std::ranges::any_of(ranges_, &ParameterRange::Bounded);
}

bool Box::Holds(std::span<const double> p) const {
  for (std::size_t j = 0; bounds_ && j < ranges_.size(); ++j) {
    if (p[j] < ranges_[j].low || p[j] > ranges_[j].high) return false;
  }
  return true;
}

void Box::Clamp(std::span<double> p) const {
  for (std::size_t j = 0; bounds_ && j < ranges_.size(); ++j) {
    const ParameterRange& range = ranges_[j];
    if (!range.Bounded() || std::isnan(p[j])) continue;
    const double wall = NearerWall(range, p[j]);
    const bool on = std::abs(p[j] - wall) <= kRounding * std::abs(wall);
    p[j] = on ? wall : std::clamp(p[j], range.low, range.high);
  }
}

std::vector<bool> Box::OnBounds(std::span<const double> p) const {
  std::vector<bool> on(p.size(), false);
  for (std::size_t j = 0; bounds_ && j < ranges_.size(); ++j)
    on[j] = p[j] == ranges_[j].low || p[j] == ranges_[j].high;
  return on;
}

namespace {

/// How far a step may go before it meets a wall, and which parameter meets it.
struct Meeting {
  Index bound = -1;  // its place among the bound parameters; -1 when none does
  double share = 1;  // of the step
  double way = 0;    // that it may go
};

/// The steps of StepInBox, one wall after the other.
class WallSearch {
 public:
  WallSearch(const LinearisedProblem& problem, const VectorXd& p, const Box& box)
      : problem_(problem), whole_(problem.Parted()), p_(p), box_(box) {
    set_.assign(whole_.bound.size(), false);
  }

  TrialStep Step(double radius, double damping_guess) {
    TrialStep trial = problem_.StepWithin(radius, damping_guess);
    VectorXd step = trial.step(whole_.bound);
    Meeting meeting = FirstWall(step);
    if (meeting.bound < 0) return trial;
    VectorXd walls = VectorXd::Zero(step.size());
    while (meeting.bound >= 0) {
      Offer(walls + meeting.share * (step - walls),
            std::max(trial.damping, std::numeric_limits<double>::min()));
      walls[meeting.bound] = meeting.way;
      set_[static_cast<std::size_t>(meeting.bound)] = true;
      const LinearisedProblem rest(Rest(walls), problem_.Scale());
      trial = rest.StepWithin(radius);
      step = trial.step(whole_.bound);
      for (Index i = 0; i < step.size(); ++i) {
        if (set_[static_cast<std::size_t>(i)]) step[i] = walls[i];
      }
      meeting = FirstWall(step);
    }
    Offer(step, trial.damping);
    return best_;
  }

 private:
  /// With walls as they are set, and all else along `step`.
  Meeting FirstWall(const VectorXd& step) const {
    Meeting first;
    for (Index i = 0; i < step.size(); ++i) {
      if (set_[static_cast<std::size_t>(i)]) continue;
      const Index j = whole_.bound[static_cast<std::size_t>(i)];
      const ParameterRange& range = box_.Range(static_cast<std::size_t>(j));
      const double way = step[i] < 0 ? range.low - p_[j] : range.high - p_[j];
      if (std::abs(step[i]) <= std::abs(way)) continue;
      const double share = way / step[i];
      if (share < first.share || first.bound < 0) first = {i, share, way};
    }
    return first;
  }

  /// The problem of what is not set, from where the walls have gone.
  PartedJacobian Rest(const VectorXd& walls) const {
    PartedJacobian rest = whole_;
    for (Index i = 0; i < walls.size(); ++i) {
      if (!set_[static_cast<std::size_t>(i)]) continue;
      rest.bound_qtr += walls[i] * rest.bound_r.col(i);
      rest.bound_r.col(i).setZero();
    }
    return rest;
  }

  void Offer(const VectorXd& step, double damping) {
    const double gain = whole_.Gain(step);
    if (best_.step.size() > 0 && gain < best_.linear_gain) return;
    best_.step = whole_.Complete(step);
    best_.length = problem_.Scale().cwiseProduct(step).norm();
    best_.damping = damping;
    best_.linear_gain = gain;
    best_.damped_gain = 0;
  }

  const LinearisedProblem& problem_;
  const PartedJacobian& whole_;
  const VectorXd& p_;
  const Box& box_;
  std::vector<bool> set_;
  TrialStep best_;
};

}  // namespace

TrialStep StepInBox(const LinearisedProblem& problem, const VectorXd& p, const Box& box,
                    double radius, double damping_guess) {
  return WallSearch(problem, p, box).Step(radius, damping_guess);
}

ScalarObjective ContinuedBeyond(ScalarObjective objective, const Box& box, double scale_of_values) {
  return [objective = std::move(objective), &box, scale_of_values](std::span<const double> p) {
    if (box.Holds(p)) return objective(p);
    std::vector<double> inside(p.begin(), p.end());
    box.Clamp(inside);
    double distance = 0;
    for (std::size_t j = 0; j < p.size(); ++j)
      distance += std::abs(p[j] - inside[j]) / SizeOf(box.Range(j), inside[j]);
    const double value = objective(inside);
    return value + (value + 1e-3 * scale_of_values) * distance;
  };
}

void PutIntoBox(const ScalarObjective& objective, const Box& box, MinimiseOutcome& outcome) {
  box.Clamp(outcome.p);
  outcome.value = objective(outcome.p);
  ++outcome.evaluations;
  for (std::size_t j = 0; j < outcome.p.size(); ++j) {
    const double here = outcome.p[j];
    const double wall = NearerWall(box.Range(j), here);
    if (!std::isfinite(wall) || here == wall) continue;
    outcome.p[j] = wall;
    const double value = objective(outcome.p);
    ++outcome.evaluations;
    if (value <= outcome.value) {
      outcome.value = value;
    } else {
      outcome.p[j] = here;
    }
  }
}

}  // namespace tarnwick
