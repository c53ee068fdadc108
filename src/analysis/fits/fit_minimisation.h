// The values of a fit: by the model's method, by a finishing run, and anew with every round of weights that follow them. Knows
// minimisers and the parts of a fit; judges and words nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "analysis/fits/fit_part.h"
#include "base/progress.h"
#include "fit/judge/fit_statistics.h"
#include "fit/minimise/minimise_newton.h"

namespace tarnwick {

/// Weights that follow the values are made anew so often at most.
inline constexpr int kMostWeightRounds = 60;

/// `undefined` of the problem's points have no residual.
FittedPoints PointsOf(const LeastSquaresProblem& problem, const FitWeighting& weighting,
                      std::int64_t undefined);

class FitMinimisation {
 public:
  using Parts = std::vector<std::unique_ptr<FitPart>>;
  using EveryStep = std::function<void(std::span<const double>)>;

  /// All borrowed. `problem` is that of the parts together; the run's settings are those of the first part.
  FitMinimisation(const Parts& parts, LeastSquaresProblem& problem, std::vector<double> start,
                  Progress& progress, const EveryStep& every_step);

  /// The method, from the start. Throws EIntegerDivision, as the following.
  void Run();
  /// A Newton-type run from the values found. The outcome is that of all runs.
  void Finish();
  /// The sum of squares that Finish would reach; nothing when that cannot be told.
  std::optional<double> Probe();

  const MinimiseOutcome& Outcome() const { return outcome_; }
  /// At the last values, when a method left it.
  const std::optional<ReducedJacobian>& Jacobian() const { return jacobian_; }

 private:
  /// How a fit goes on from values found; `reduced` is empty where the method leaves none.
  using Again = std::function<NewtonOutcome(std::span<const double>, const MinimiseOptions&)>;

  MinimiseOptions Options(std::int32_t iterations) const;
  NewtonOutcome ByMethod(std::span<const double> start, const MinimiseOptions& options);
  void SettleWeights(const Again& again, double near);
  bool SettleRound(const Again& again, double near);
  double Moved(std::span<const double> from, NewtonOutcome& to);
  void GoOnWith(NewtonOutcome next);
  NewtonOutcome NewtonFromValues(const MinimiseOptions& options, Progress& progress);
  bool LedAstray(const NewtonOutcome& newton) const;
  const FitSettings& Settings() const { return parts_.front()->job.settings; }
  const FitWeighting& Weighting() const { return parts_.front()->weighting; }
  bool ByNewton() const { return Settings().ProcType == FitProcType::cfp_Newton; }

  const Parts& parts_;
  LeastSquaresProblem& problem_;
  std::vector<double> start_;
  Progress& progress_;
  const EveryStep& every_step_;
  MinimiseOutcome outcome_;
  std::optional<ReducedJacobian> jacobian_;
};

}  // namespace tarnwick
