// The weights 1/σ of one model's points: given by errors, by the model's own values, by how far a point lies off. Knows
// numbers; no model and no minimiser.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "fit/fit_weighting.h"

namespace tarnwick {

class PointWeights {
 public:
  /// `settled` holds no Automatic. `errors`, finite and above 0, are asked of FitWeights::Errors alone. Both spans are borrowed.
  /// Before the first Update the size of y stands for the model's value, and no loss holds a point for less.
  PointWeights(const FitWeighting& settled, std::span<const double> y,
               std::span<const double> errors);

  /// Empty where all are 1.
  std::span<const double> Now() const { return weights_.empty() ? WithoutLoss() : weights_; }
  /// The same without what the loss takes away.
  std::span<const double> WithoutLoss() const { return sigma_weights_; }

  /// Anew for these values of the model, with k varied parameters: by its own values (the fixed point is the maximum of the
  /// likelihood: Charnes, Frome & Yu, J. Am. Stat. Assoc. 71 (1976), 169; for Relative of the quasi-likelihood: Wedderburn,
  /// Biometrika 61 (1974), 439), a variance falling to a tenth at most; and by the loss (Holland & Welsch, Commun. Stat. A 6
  /// (1977), 813). A point where the model has no usable value weighs nothing.
  void Update(std::span<const double> values, std::size_t k);

  /// Of the last Update: as asked for, or 1.345 (Huber), 1.287 (soft L1), 2.385 (Cauchy) times the deviation that the residuals'
  /// median tells: 95 % as efficient as least squares for normal errors. 0 where half of the residuals are 0.
  double LossScale() const { return loss_scale_; }
  /// The deviation that the residuals' median tells, for weight 1.
  double RobustDeviation() const { return deviation_; }
  /// Points of the last Update that weigh nothing, though the model has a value there.
  std::int64_t WithoutWeight() const { return without_weight_; }

 private:
  void WeighByValues(std::span<const double> values);
  void WeighByLoss(std::span<const double> values, std::size_t k);

  FitWeighting weighting_;
  std::span<const double> y_;
  std::vector<double> sigma_weights_;
  std::vector<double> weights_;  // of a robust loss
  double loss_scale_ = 0;
  double deviation_ = 0;
  std::int64_t without_weight_ = 0;
};

/// What takes the place of the residual variance under a loss, from weighted residuals:
/// K^2 [sum psi^2 / (n - k)] / mean(psi')^2 with K = 1 + k/n var(psi') / mean(psi')^2 (Huber, Robust Statistics, 1981, chapter
/// 7.6). Undefined for n <= k and where no residual is held in full.
double RobustVariance(FitLoss loss, double loss_scale, std::span<const double> residuals,
                      std::size_t k);

}  // namespace tarnwick
