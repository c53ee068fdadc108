#include "fit/minimise_newton.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fit/linearised_problem.h"
#include "fit/step_acceleration.h"

namespace tarnwick {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
/// First radius of the trust region, in scaled lengths of the start: a wide one lets parameters that the first steps misjudge
/// fly off, never to come back.
constexpr double kFirstRadius = 1;
/// A step is taken when it gains this part of what was predicted.
constexpr double kLeastGain = 1e-4;
/// The part of the residuals that a last full step may still take away: far below what a standard error would show.
constexpr double kOffsetGoal = 1e-10;
/// Up to this many points all passes are orthogonal: it costs next to nothing.
constexpr std::size_t kFewPoints = 512;
/// Linear parameters are fitted anew where that takes away this part of the sum of squares.
constexpr double kWorthCorrecting = 0.1;
/// Full steps are accelerated where they promise to take away less than this part of the sum of squares.
constexpr double kAccelerated = 0.01;
/// A smaller ratio of singular values is worth an orthogonal pass at the end.
constexpr double kWellConditioned = 1e-3;

using Vector = Eigen::VectorXd;

std::span<const double> AsSpan(const Vector& p) {
  return {p.data(), static_cast<std::size_t>(p.size())};
}

/// Parameter values and what a pass there left.
struct Place {
  Vector p;
  ReducedJacobian reduced;

  double Norm() const { return std::sqrt(reduced.sum_of_squares); }
  bool Defined() const {
    return reduced.undefined == 0 && std::isfinite(reduced.sum_of_squares) &&
           reduced.r.allFinite() && reduced.qtr.allFinite();
  }
};

class NewtonRun {
 public:
  NewtonRun(ModelResiduals& residuals, std::span<const double> start,
            const MinimiseOptions& options, Progress& progress)
      : residuals_(residuals),
        options_(options),
        progress_(progress),
        how_(residuals.PointCount() <= kFewPoints ? Reduction::Orthogonal
                                                  : Reduction::NormalEquations),
        start_(Eigen::Map<const Vector>(start.data(), static_cast<Eigen::Index>(start.size()))) {}

  NewtonOutcome Run();

 private:
  Place Evaluate(const Vector& p);
  bool Begin();
  void Linearise();
  bool IsStationary() const;
  bool IsLastStep(const TrialStep& trial) const;
  TrialStep NextTrial();
  bool Iterate();
  void UpdateRadius(const TrialStep& trial, double actual, double gain);
  Place Corrected(Place place, const PartedJacobian& parted, double limit);
  bool Accept(Place place, const PartedJacobian& parted, const TrialStep& trial);
  double Noise(double sum_of_squares) const;
  double ScaledLength() const {
    return scale_.cwiseProduct(here_.p(problem_->Parted().bound)).norm();
  }
  bool Finish(StopReason why, std::string stop_test);

  ModelResiduals& residuals_;
  const MinimiseOptions& options_;
  Progress& progress_;
  Reduction how_;
  Vector start_;

  MinimiseOutcome outcome_;
  Place here_;
  std::vector<bool> free_;
  Vector scale_;
  std::optional<LinearisedProblem> problem_;
  double radius_ = 0;
  bool moved_ = false;
  bool rejected_ = false;  // the last trial
  StepAcceleration acceleration_;
  /// How much smaller the last step, a full one, made the offset; 1 after any other.
  double contraction_ = 1;
};

Place NewtonRun::Evaluate(const Vector& p) {
  ++outcome_.evaluations;
  Place place{p, residuals_.Reduce(AsSpan(p), how_)};
  how_ = place.reduced.how;
  return place;
}

bool NewtonRun::Finish(StopReason why, std::string stop_test) {
  outcome_.why = why;
  outcome_.stop_test = std::move(stop_test);
  return false;
}

// Rounding of the residuals lets their sum of squares waver by this, relative to it.
double NewtonRun::Noise(double sum_of_squares) const {
  return 4 * kEpsilon * (1 + residuals_.NormOfY() / std::sqrt(sum_of_squares));
}

void NewtonRun::Linearise() {
  PartedJacobian parted(here_.reduced, free_);
  const Vector lengths = parted.BoundLengths();
  if (scale_.size() != lengths.size()) {
    scale_ = (lengths.array() > 0).select(lengths, 1.0);
  } else {
    scale_ = scale_.cwiseMax(lengths);
  }
  problem_.emplace(std::move(parted), scale_);
}

bool NewtonRun::Begin() {
  outcome_.p.assign(start_.begin(), start_.end());
  if (start_.size() == 0) return Finish(StopReason::NothingVaried, "");
  if (start_.size() > kMaxVariedParameters) return Finish(StopReason::TooManyParameters, "");
  here_ = Evaluate(start_);
  outcome_.start_value = here_.reduced.sum_of_squares;
  if (!here_.Defined()) return Finish(StopReason::UndefinedAtStart, "");
  free_ = residuals_.LinearParameters(AsSpan(start_));
  const PartedJacobian parted(here_.reduced, free_);
  here_ = Corrected(std::move(here_), parted, here_.reduced.sum_of_squares);
  Linearise();
  const double length = ScaledLength();
  radius_ = kFirstRadius * (length > 0 ? length : 1);
  return true;
}

bool NewtonRun::IsStationary() const {
  const double noise = kEpsilon * residuals_.NormOfY();
  return problem_->Parted().Offset() <= std::max(kOffsetGoal * here_.Norm(), noise);
}

bool NewtonRun::IsLastStep(const TrialStep& trial) const {
  const double offset = problem_->Parted().Offset();
  return trial.damping == 0 &&
         offset * offset <= options_.tolerance * here_.reduced.sum_of_squares &&
         contraction_ * offset <= kOffsetGoal * here_.Norm();
}

void NewtonRun::UpdateRadius(const TrialStep& trial, double actual, double gain) {
  if (gain <= 0.25) {
    const double slope = -(trial.linear_gain + trial.damped_gain);
    double factor = actual >= 0 ? 0.5 : 0.5 * slope / (slope + 0.5 * actual);
    if (!(factor >= 0.1) || actual < -99) factor = 0.1;
    radius_ = factor * std::min(radius_, trial.length / 0.1);
  } else if (trial.damping == 0 || gain >= 0.75) {
    radius_ = 2 * trial.length;
  }
}

// With the linear parameters where they fit best, if that is worth a pass: they stand far off, or the sum of squares is above
// `limit`.
Place NewtonRun::Corrected(Place place, const PartedJacobian& parted, double limit) {
  const bool far_off = parted.free_qtr.squaredNorm() > kWorthCorrecting * parted.BestOfFree();
  if (parted.free.empty() || (!far_off && place.reduced.sum_of_squares <= limit)) return place;
  const Vector rest = Vector::Zero(static_cast<Eigen::Index>(parted.bound.size()));
  Place corrected = Evaluate(place.p + parted.Complete(rest));
  if (corrected.Defined() && corrected.reduced.sum_of_squares < place.reduced.sum_of_squares) {
    moved_ = true;
    return corrected;
  }
  free_.assign(free_.size(), false);
  return place;
}

bool NewtonRun::Accept(Place place, const PartedJacobian& parted, const TrialStep& trial) {
  const double offset = problem_->Parted().Offset();
  const double limit = here_.reduced.sum_of_squares * (1 + Noise(here_.reduced.sum_of_squares));
  place = Corrected(std::move(place), parted, limit);
  if (place.reduced.sum_of_squares > limit) {
    free_.assign(free_.size(), false);
    Linearise();
    radius_ = std::max(radius_, 1e-3 * ScaledLength());
    return false;
  }
  here_ = std::move(place);
  moved_ = true;
  rejected_ = false;
  Linearise();
  contraction_ =
      trial.damping == 0 && offset > 0 ? std::min(problem_->Parted().Offset() / offset, 1.0) : 1;
  return true;
}

TrialStep NewtonRun::NextTrial() {
  TrialStep trial = problem_->StepWithin(radius_);
  const double offset = problem_->Parted().Offset();
  const bool full =
      trial.damping == 0 && offset * offset <= kAccelerated * here_.reduced.sum_of_squares;
  if (full && !rejected_) {
    trial.step = acceleration_.Accelerate(here_.p, trial.step, here_.reduced.r);
  } else {
    acceleration_.Clear();
  }
  return trial;
}

bool NewtonRun::Iterate() {
  if (IsStationary()) return Finish(StopReason::Converged, "stationary");
  const TrialStep trial = NextTrial();
  if (outcome_.iterations == 1) radius_ = std::min(radius_, trial.length);
  const bool last = IsLastStep(trial);
  const Vector p = here_.p + trial.step;
  if (p == here_.p) return Finish(StopReason::Converged, "step");

  Place there = Evaluate(p);
  rejected_ = true;
  if (!there.Defined()) {
    radius_ = 0.1 * std::min(radius_, trial.length);
    if (radius_ <= kEpsilon * ScaledLength())
      return Finish(StopReason::NoFurtherDescent, "undefined all around");
    return true;
  }
  const PartedJacobian parted(there.reduced, free_);
  const double before = problem_->Parted().BestOfFree();
  const double predicted = trial.PredictedReduction();
  const double actual = 1 - parted.BestOfFree() / before;
  const double noise = Noise(before);
  if (predicted <= noise && std::abs(actual) <= noise) {
    // Sums of squares cannot tell any more; the offset can.
    if (parted.Offset() >= problem_->Parted().Offset())
      return Finish(StopReason::Converged, "rounding");
    Accept(std::move(there), parted, trial);
    return !last || Finish(StopReason::Converged, "reduction");
  }
  const double gain = predicted > 0 ? actual / predicted : 0;
  UpdateRadius(trial, actual, gain);
  if (gain >= kLeastGain) {
    if (Accept(std::move(there), parted, trial) && last)
      return Finish(StopReason::Converged, "reduction");
    return true;
  }
  if (predicted <= noise) return Finish(StopReason::Converged, "rounding");
  if (radius_ <= kEpsilon * ScaledLength()) return Finish(StopReason::NoFurtherDescent, "radius");
  return true;
}

NewtonOutcome NewtonRun::Run() {
  if (Begin()) {
    do {
      if (options_.every_step) options_.every_step(AsSpan(here_.p));
      if (!progress_.Advance(outcome_.iterations)) {
        Finish(StopReason::Cancelled, "");
        break;
      }
      if (outcome_.iterations >= options_.max_iterations) {
        Finish(StopReason::IterationLimit, "");
        break;
      }
      ++outcome_.iterations;
    } while (Iterate());
  }
  outcome_.value = here_.reduced.sum_of_squares;
  outcome_.p.assign(here_.p.begin(), here_.p.end());
  outcome_.changed = moved_;
  return {std::move(outcome_), std::move(here_.reduced)};
}

}  // namespace

NewtonOutcome MinimiseNewton(ModelResiduals& residuals, std::span<const double> start,
                             const MinimiseOptions& options, Progress& progress) {
  return NewtonRun(residuals, start, options, progress).Run();
}

}  // namespace tarnwick
