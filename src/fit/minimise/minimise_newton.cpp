#include "fit/minimise/minimise_newton.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/undefined.h"
#include "fit/minimise/bounded_step.h"
#include "fit/minimise/step_acceleration.h"
#include "fit/residuals/linearised_problem.h"

namespace tarnwick {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
/// First radius of the trust region, in scaled lengths of the start: a wide one lets parameters that the first steps misjudge
/// fly off, never to come back.
constexpr double kFirstRadius = 1;
/// A step is taken when it gains this part of what was predicted.
constexpr double kLeastGain = 1e-4;
/// A step that gains less than this part of what was predicted is in trouble.
constexpr double kPoorGain = 0.25;
/// Linear parameters are left free at trouble within so many iterations, or after so many troubles.
constexpr int kOpening = 2;
constexpr int kMostTroubles = 3;
/// In the opening the start must promise to lower the sum of squares by this factor to be gone back to.
constexpr double kWorthGoingBack = 4;
/// The part of the residuals that a last full step may still take away: far below what a standard error would show.
constexpr double kOffsetGoal = 1e-10;
/// Up to this many points all passes are orthogonal: it costs next to nothing.
constexpr std::size_t kFewPoints = 512;
/// Linear parameters are fitted anew where that takes away this part of the sum of squares.
constexpr double kWorthCorrecting = 0.1;
/// Full steps are accelerated where they promise to take away less than this part of the sum of squares.
constexpr double kAccelerated = 0.01;

// Stop tests, as reports name them.
constexpr auto kIsStationary = "no parameter can take any more away from the residuals";
constexpr auto kReductionIsSmall = "what was left to gain lay below Tolerance before the last step";
constexpr auto kSumIsRounding = "the sum of squares changes by rounding errors alone";
constexpr auto kStepIsRounding = "the step is below the precision of the parameters";

using Vector = Eigen::VectorXd;

std::span<const double> AsSpan(const Vector& p) {
  return {p.data(), static_cast<std::size_t>(p.size())};
}
std::span<double> AsSpan(Vector& p) {
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
  NewtonRun(LeastSquaresProblem& residuals, std::span<const double> start,
            const MinimiseOptions& options, Progress& progress)
      : residuals_(residuals),
        options_(options),
        progress_(progress),
        how_(residuals.PointCount() <= kFewPoints ? Reduction::Orthogonal
                                                  : Reduction::NormalEquations),
        start_(Eigen::Map<const Vector>(start.data(), static_cast<Eigen::Index>(start.size()))),
        box_(residuals.Ranges()) {
    box_.Clamp(AsSpan(start_));
  }

  /// Goes on to the end, or until there were so many iterations in all.
  void To(std::int32_t iterations);
  NewtonOutcome Outcome() const { return {outcome_, here_.reduced}; }

 private:
  Place Evaluate(const Vector& p);
  bool Begin();
  void Linearise();
  void StartRegion();
  bool MayFree() const;
  bool FreeLinear();
  bool StartPromisesLittle() const;
  bool IsTrouble(double gain);
  bool IsStationary() const;
  bool IsLastStep(const TrialStep& trial) const;
  TrialStep NextTrial();
  TrialStep TrialFromHere();
  Vector After(const TrialStep& trial) const;
  void KeepWithinBox();
  ReducedJacobian AtRest(const ReducedJacobian& reduced) const;
  void FindHeld();
  bool BeginIteration();
  bool Iterate();
  bool StartWasBetter() const;
  void UpdateRadius(const TrialStep& trial, double actual, double gain);
  Place Corrected(Place place, const PartedJacobian& parted, double limit);
  bool Accept(Place place, const PartedJacobian& parted, const TrialStep& trial);
  double Noise(double sum_of_squares) const;
  double ScaledLength() const {
    return scale_.cwiseProduct(here_.p(problem_->Parted().bound)).norm();
  }
  bool RegionIsLost() const { return radius_ <= kEpsilon * ScaledLength(); }
  bool Finish(StopReason why, std::string stop_test);
  bool FinishUntried(std::string stop_test);

  LeastSquaresProblem& residuals_;
  const MinimiseOptions& options_;
  Progress& progress_;
  Reduction how_;
  Vector start_;
  Box box_;
  bool at_walls_ = false;   // a step has met the box: from here on it is kept to
  std::vector<bool> held_;  // parameters that stand on a wall and are pushed against it

  bool begun_ = false;
  bool ended_ = false;
  std::int32_t limit_ = 0;
  MinimiseOutcome outcome_;
  Place begin_;
  Place here_;
  std::vector<bool> linear_;  // parameters that may be left free
  std::vector<bool> free_;    // those that are
  int troubles_ = 0;
  Vector scale_;
  std::optional<LinearisedProblem> problem_;
  double radius_ = 0;
  double damping_guess_ = 0;
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

// A trial that was not made is none.
bool NewtonRun::FinishUntried(std::string stop_test) {
  --outcome_.iterations;
  return Finish(StopReason::Converged, std::move(stop_test));
}

// Rounding of the residuals lets their sum of squares waver by this, relative to it.
double NewtonRun::Noise(double sum_of_squares) const {
  return 16 * kEpsilon * (1 + residuals_.NormOfY() / std::sqrt(sum_of_squares));
}

/// -J'r points the way down.
void NewtonRun::FindHeld() {
  const Vector slope = here_.reduced.r.transpose() * here_.reduced.qtr;
  held_.assign(free_.size(), false);
  for (std::size_t j = 0; j < held_.size(); ++j) {
    const auto i = static_cast<Eigen::Index>(j);
    held_[j] = (here_.p[i] == box_.Range(j).low && slope[i] > 0) ||
               (here_.p[i] == box_.Range(j).high && slope[i] < 0);
  }
}

ReducedJacobian NewtonRun::AtRest(const ReducedJacobian& reduced) const {
  return at_walls_ ? Holding(reduced, held_) : reduced;
}

// No step is taken out of the box. Parameters with bounds are not left free: where those fit best may lie beyond.
void NewtonRun::KeepWithinBox() {
  at_walls_ = true;
  for (std::size_t j = 0; j < free_.size(); ++j) {
    if (box_.Range(j).Bounded()) linear_[j] = free_[j] = false;
  }
}

void NewtonRun::Linearise() {
  if (at_walls_) FindHeld();
  PartedJacobian parted(AtRest(here_.reduced), free_);
  const Vector lengths = parted.BoundLengths();
  if (scale_.size() != lengths.size()) {
    scale_ = (lengths.array() > 0).select(lengths, 1.0);
  } else {
    scale_ = scale_.cwiseMax(lengths);
  }
  problem_.emplace(std::move(parted), scale_);
}

void NewtonRun::StartRegion() {
  scale_.resize(0);
  Linearise();
  const double length = ScaledLength();
  radius_ = kFirstRadius * (length > 0 ? length : 1);
  damping_guess_ = 0;
  acceleration_.Clear();
  contraction_ = 1;
}

bool NewtonRun::Begin() {
  outcome_.p.assign(start_.begin(), start_.end());
  if (start_.size() == 0) return Finish(StopReason::NothingVaried, "no parameter is varied");
  if (start_.size() > kMaxVariedParameters) {
    outcome_.message = kTooManyParametersText;
    return Finish(StopReason::TooManyParameters, "too many parameters are varied");
  }
  here_ = Evaluate(start_);
  outcome_.start_value = here_.reduced.sum_of_squares;
  if (!here_.Defined()) {
    outcome_.start_value = here_.reduced.sum_of_squares = kUndefined;
    outcome_.message = "The sum of squares has no value at the start.";
    return Finish(StopReason::UndefinedAtStart, "the sum of squares has no value at the start");
  }
  begin_ = here_;
  linear_ = residuals_.LinearParameters(AsSpan(start_));
  free_.assign(linear_.size(), false);
  StartRegion();
  return true;
}

bool NewtonRun::MayFree() const {
  return std::find(linear_.begin(), linear_.end(), true) != linear_.end();
}

// From here on the linear parameters follow the others (variable projection: Golub & Pereyra 1973, with the derivatives of
// Kaufman 1975), from the start again if they alone can do better there. False when there are none, or they are free already.
bool NewtonRun::FreeLinear() {
  if (!MayFree()) return false;
  free_ = std::exchange(linear_, std::vector<bool>(linear_.size(), false));
  const double best_of_start = PartedJacobian(begin_.reduced, free_).BestOfFree();
  if (here_.reduced.sum_of_squares > best_of_start) here_ = begin_;
  const PartedJacobian parted(here_.reduced, free_);
  here_ = Corrected(std::move(here_), parted, here_.reduced.sum_of_squares);
  StartRegion();
  return true;
}

// To leave the linear parameters free in the opening can mean to go back to the start. That costs a few evaluations, and
// where it promises little more than what was reached, a shorter step does as well.
bool NewtonRun::StartPromisesLittle() const {
  if (!MayFree()) return false;
  const double best_of_start = PartedJacobian(begin_.reduced, linear_).BestOfFree();
  const double here = here_.reduced.sum_of_squares;
  return best_of_start < here && here < kWorthGoingBack * best_of_start;
}

bool NewtonRun::IsTrouble(double gain) {
  if (gain >= kPoorGain) return false;
  troubles_ += outcome_.iterations <= kOpening && !StartPromisesLittle() ? kMostTroubles : 1;
  return troubles_ >= kMostTroubles;
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
    damping_guess_ = trial.damping / factor;
  } else if (trial.damping == 0 || gain >= 0.75) {
    radius_ = 2 * trial.length;
    damping_guess_ = trial.damping / 2;
  }
}

// With the linear parameters where they fit best, if that is worth a pass: they stand far off, or the sum of squares is above
// `limit`.
Place NewtonRun::Corrected(Place place, const PartedJacobian& parted, double limit) {
  const bool far_off = parted.free_qtr.squaredNorm() > kWorthCorrecting * parted.BestOfFree();
  if (parted.free.empty() || (!far_off && place.reduced.sum_of_squares <= limit)) return place;
  const Vector rest = Vector::Zero(static_cast<Eigen::Index>(parted.bound.size()));
  const Vector p = place.p + parted.Complete(rest);
  if (!box_.Holds(AsSpan(p))) {
    KeepWithinBox();
    return place;
  }
  Place corrected = Evaluate(p);
  if (corrected.Defined() && corrected.reduced.sum_of_squares < place.reduced.sum_of_squares) {
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
  rejected_ = false;
  Linearise();
  contraction_ =
      trial.damping == 0 && offset > 0 ? std::min(problem_->Parted().Offset() / offset, 1.0) : 1;
  return true;
}

Vector NewtonRun::After(const TrialStep& trial) const {
  Vector p = here_.p + trial.step;
  if (at_walls_) box_.Clamp(AsSpan(p));
  return p;
}

TrialStep NewtonRun::NextTrial() {
  if (!at_walls_) {
    TrialStep trial = TrialFromHere();
    if (box_.Holds(AsSpan(here_.p + trial.step))) return trial;
    KeepWithinBox();
    const Eigen::Index count = scale_.size();
    Linearise();
    if (scale_.size() != count) StartRegion();
  }
  return StepInBox(*problem_, here_.p, box_, radius_, damping_guess_);
}

TrialStep NewtonRun::TrialFromHere() {
  TrialStep trial = problem_->StepWithin(radius_, damping_guess_);
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

// False when it was the last.
bool NewtonRun::Iterate() {
  if (IsStationary()) return FinishUntried(kIsStationary);
  const TrialStep trial = NextTrial();
  if (outcome_.iterations == 1) radius_ = std::min(radius_, trial.length);
  const bool last = IsLastStep(trial);
  const Vector p = After(trial);
  if (p == here_.p) return FinishUntried(kStepIsRounding);

  Place there = Evaluate(p);
  rejected_ = true;
  if (!there.Defined()) {
    if (FreeLinear()) return true;
    radius_ = 0.1 * std::min(radius_, trial.length);
    return !RegionIsLost() ||
           Finish(StopReason::NoFurtherDescent, "the model has no value at any step from here");
  }
  const PartedJacobian parted(AtRest(there.reduced), free_);
  const double before = problem_->Parted().BestOfFree();
  const double predicted = trial.PredictedReduction();
  const double actual = before > 0 ? 1 - parted.BestOfFree() / before : 0;
  const double noise = Noise(before);
  if (predicted <= noise && std::abs(actual) <= noise) {
    // Sums of squares cannot tell any more; the offset can.
    if (parted.Offset() >= problem_->Parted().Offset())
      return Finish(StopReason::Converged, kSumIsRounding);
    return !(Accept(std::move(there), parted, trial) && last) ||
           Finish(StopReason::Converged, kReductionIsSmall);
  }
  if (predicted <= noise) return Finish(StopReason::Converged, kSumIsRounding);

  const double gain = actual / predicted;
  UpdateRadius(trial, actual, gain);
  const bool trouble = IsTrouble(gain);
  if (gain >= kLeastGain) {
    const bool accepted = Accept(std::move(there), parted, trial);
    if (accepted && last) return Finish(StopReason::Converged, kReductionIsSmall);
  }
  if (trouble && FreeLinear()) return true;
  return !RegionIsLost() ||
         Finish(StopReason::NoFurtherDescent, "no step from here lowers the sum of squares");
}

bool NewtonRun::BeginIteration() {
  if (outcome_.iterations >= limit_)
    return Finish(StopReason::IterationLimit, "the greatest number of iterations was reached");
  if (options_.every_step) options_.every_step(AsSpan(here_.p));
  if (!progress_.Advance(outcome_.iterations) || progress_.Cancelled())
    return Finish(StopReason::Cancelled, "cancelled");
  ++outcome_.iterations;
  return true;
}

// Where the linear parameters alone can do better at the start, what was found is no minimum worth the name.
bool NewtonRun::StartWasBetter() const {
  return MayFree() && outcome_.why != StopReason::Cancelled &&
         outcome_.why != StopReason::IterationLimit &&
         here_.reduced.sum_of_squares > PartedJacobian(begin_.reduced, linear_).BestOfFree();
}

void NewtonRun::To(std::int32_t iterations) {
  limit_ = iterations;
  if (!std::exchange(begun_, true)) ended_ = !Begin();
  if (!ended_) {
    do {
      while (BeginIteration() && Iterate()) {
      }
    } while (StartWasBetter() && FreeLinear());
    outcome_.p.assign(here_.p.begin(), here_.p.end());
    outcome_.changed = here_.p != start_;
    ended_ = outcome_.why != StopReason::IterationLimit;
  }
  outcome_.value = here_.reduced.sum_of_squares;
}

}  // namespace

struct NewtonMinimiser::Impl {
  Impl(MinimiseOptions given, LeastSquaresProblem& residuals, std::span<const double> start,
       Progress& progress)
      : options(std::move(given)), run(residuals, start, options, progress) {}

  MinimiseOptions options;
  NewtonRun run;
};

NewtonMinimiser::NewtonMinimiser(LeastSquaresProblem& residuals, std::span<const double> start,
                                 MinimiseOptions options, Progress& progress)
    : impl_(std::make_unique<Impl>(std::move(options), residuals, start, progress)) {}

NewtonMinimiser::~NewtonMinimiser() = default;

void NewtonMinimiser::RunTo(std::int32_t iterations) {
  impl_->run.To(std::min(iterations, impl_->options.max_iterations));
}

NewtonOutcome NewtonMinimiser::Outcome() const {
  return impl_->run.Outcome();
}

NewtonOutcome MinimiseNewton(LeastSquaresProblem& residuals, std::span<const double> start,
                             const MinimiseOptions& options, Progress& progress) {
  NewtonRun run(residuals, start, options, progress);
  run.To(options.max_iterations);
  return run.Outcome();
}

}  // namespace tarnwick
