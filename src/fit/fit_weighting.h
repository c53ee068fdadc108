// How the points of a fit weigh in its sum of squares and what its errors are founded on: as asked for, and as it was done.
// Plain values.
#pragma once

#include <cstdint>

namespace tarnwick {

/// What makes the weight 1/σ of a point.
enum class FitWeights : std::uint8_t {
  Automatic,  ///< the errors of Y where the DataSet has some, else none
  None,       ///< all points weigh alike, σ = 1
  Errors,     ///< the errors of Y
  Counts,     ///< σ² is the model's value
  Relative,   ///< σ is the size of the model's value
};

/// Whether σ is taken at its word.
enum class FitErrors : std::uint8_t {
  Automatic,  ///< absolute for errors and counts with the linear loss, else scaled
  Absolute,
  Scaled,  ///< by the residuals: only the ratios of the σ count
};

/// How much a residual of z = (r / (σ scale))² adds to the sum.
enum class FitLoss : std::uint8_t { Linear, SoftL1, Huber, Cauchy };

struct FitWeighting {
  FitWeights weights = FitWeights::Automatic;
  FitErrors errors = FitErrors::Automatic;
  FitLoss loss = FitLoss::Linear;
  double loss_scale =
      0;  ///< where the loss begins to hold a residual for less; 0: told by the residuals
  bool operator==(const FitWeighting&) const = default;
};

/// What `asked` comes to for points that have errors, or have none: no Automatic is left.
constexpr FitWeighting Settled(FitWeighting asked, bool has_errors) {
  if (asked.weights == FitWeights::Automatic)
    asked.weights = has_errors ? FitWeights::Errors : FitWeights::None;
  if (asked.errors == FitErrors::Automatic) {
    const bool known = asked.weights == FitWeights::Errors || asked.weights == FitWeights::Counts;
    asked.errors = known && asked.loss == FitLoss::Linear ? FitErrors::Absolute : FitErrors::Scaled;
  }
  return asked;
}

/// True when weights depend on the model's values: the fit is made again until they agree.
constexpr bool IsIterated(const FitWeighting& settled) {
  return settled.weights == FitWeights::Counts || settled.weights == FitWeights::Relative ||
         settled.loss != FitLoss::Linear;
}

}  // namespace tarnwick
