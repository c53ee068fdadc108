#include "fit/residuals/point_weights.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/quantile.h"
#include "base/undefined.h"
#include "fit/residuals/greatest_size.h"

namespace tarnwick {
namespace {

/// In one update a variance that follows the model falls no further.
constexpr double kLeastFall = 0.1;
/// Stands for a Y of 0 before the model has values: one count, or this part of the greatest.
constexpr double kLeastCounts = 1;
constexpr double kLeastRelative = 1e-3;

double TuningConstant(FitLoss loss) {
  switch (loss) {
    case FitLoss::SoftL1:
      return 1.287;
    case FitLoss::Huber:
      return 1.345;
    case FitLoss::Cauchy:
      return 2.385;
    case FitLoss::Linear:
      break;
  }
  return 1;
}

/// rho'(z) of a loss rho, by which a square counts; z = (r/scale)^2.
double ShareOfSquare(FitLoss loss, double z) {
  switch (loss) {
    case FitLoss::SoftL1:
      return 1 / std::sqrt(1 + z);
    case FitLoss::Huber:
      return z <= 1 ? 1 : 1 / std::sqrt(z);
    case FitLoss::Cauchy:
      return 1 / (1 + z);
    case FitLoss::Linear:
      break;
  }
  return 1;
}

/// psi'(r) of psi(r) = r rho'(z).
double SlopeOfInfluence(FitLoss loss, double z) {
  switch (loss) {
    case FitLoss::SoftL1:
      return std::pow(1 + z, -1.5);
    case FitLoss::Huber:
      return z <= 1 ? 1 : 0;
    case FitLoss::Cauchy:
      return (1 - z) / ((1 + z) * (1 + z));
    case FitLoss::Linear:
      break;
  }
  return 1;
}

/// From the median of the sizes but the k - 1 smallest, which the parameters may have made vanish.
double RobustDeviationOf(std::vector<double> sizes, std::size_t k) {
  if (sizes.empty()) return 0;
  const std::size_t passed = std::min(k > 0 ? k - 1 : 0, sizes.size() - 1);
  return ValueAtRank(sizes, passed + (sizes.size() - passed) / 2) / kMedianOfNormal;
}

}  // namespace

PointWeights::PointWeights(const FitWeighting& settled, std::span<const double> y,
                           std::span<const double> errors)
    : weighting_(settled), y_(y), loss_scale_(settled.loss_scale) {
  if (settled.weights == FitWeights::Errors) {
    for (const double error : errors) sigma_weights_.push_back(1 / error);
  }
  if (settled.weights == FitWeights::Counts) {
    for (const double value : y)
      sigma_weights_.push_back(1 / std::sqrt(std::max(std::abs(value), kLeastCounts)));
  }
  if (settled.weights != FitWeights::Relative) return;
  const double least = kLeastRelative * GreatestSize(y);
  if (!(least > 0)) return;
  for (const double value : y) sigma_weights_.push_back(1 / std::max(std::abs(value), least));
}

void PointWeights::Update(std::span<const double> values, std::size_t k) {
  without_weight_ = 0;
  WeighByValues(values);
  if (weighting_.loss != FitLoss::Linear) WeighByLoss(values, k);
}

void PointWeights::WeighByValues(std::span<const double> values) {
  const bool counts = weighting_.weights == FitWeights::Counts;
  if (!counts && weighting_.weights != FitWeights::Relative) return;
  sigma_weights_.resize(values.size(), 0);
  const double most = counts ? 1 / std::sqrt(kLeastFall) : 1 / kLeastFall;
  for (std::size_t i = 0; i < values.size(); ++i) {
    double& weight = sigma_weights_[i];
    const double wanted = counts ? 1 / std::sqrt(values[i]) : 1 / std::abs(values[i]);
    if (!std::isfinite(wanted) || !(wanted > 0)) {
      weight = 0;
      if (std::isfinite(values[i])) ++without_weight_;
    } else {
      weight = weight > 0 ? std::min(wanted, most * weight) : wanted;
    }
  }
}

void PointWeights::WeighByLoss(std::span<const double> values, std::size_t k) {
  std::vector<double> residuals(values.size());
  std::vector<double> sizes;
  sizes.reserve(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double weight = sigma_weights_.empty() ? 1 : sigma_weights_[i];
    residuals[i] = weight * (y_[i] - values[i]);
    if (weight > 0 && std::isfinite(residuals[i])) sizes.push_back(std::abs(residuals[i]));
  }
  deviation_ = RobustDeviationOf(std::move(sizes), k);
  loss_scale_ = weighting_.loss_scale > 0 ? weighting_.loss_scale
                                          : TuningConstant(weighting_.loss) * deviation_;
  weights_.assign(values.size(), 1);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double z = residuals[i] / loss_scale_ * (residuals[i] / loss_scale_);
    if (loss_scale_ > 0 && std::isfinite(z))
      weights_[i] = std::sqrt(ShareOfSquare(weighting_.loss, z));
    if (!sigma_weights_.empty()) weights_[i] *= sigma_weights_[i];
  }
}

double RobustVariance(FitLoss loss, double loss_scale, std::span<const double> residuals,
                      std::size_t k) {
  const auto n = static_cast<double>(residuals.size());
  if (residuals.size() <= k) return kUndefined;
  double influence = 0;
  double slope = 0;
  double slope_squared = 0;
  for (const double r : residuals) {
    const double z = loss_scale > 0 ? r / loss_scale * (r / loss_scale) : 0;
    const double psi = r * ShareOfSquare(loss, z);
    const double derivative = loss_scale > 0 ? SlopeOfInfluence(loss, z) : 1;
    influence += psi * psi;
    slope += derivative;
    slope_squared += derivative * derivative;
  }
  const double mean = slope / n;
  if (!(mean > 0)) return kUndefined;
  const double variance = std::max(slope_squared / n - mean * mean, 0.0);
  const double correction = 1 + static_cast<double>(k) / n * variance / (mean * mean);
  return correction * correction * influence / (n - static_cast<double>(k)) / (mean * mean);
}

}  // namespace tarnwick
