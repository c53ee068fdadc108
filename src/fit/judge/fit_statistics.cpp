#include "fit/judge/fit_statistics.h"

#include <Eigen/Core>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "base/undefined.h"
#include "fit/judge/distributions.h"
#include "fit/residuals/decompositions.h"

namespace tarnwick {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

// A parameter whose part in the undetermined directions is smaller has errors of its own.
constexpr double kNoShare = 1e-6;
// Of an F ratio: what chance alone reaches now and then.
constexpr double kChanceRatio = 3;
// A parameter with a smaller part than this, relative to the greatest, is not worth naming.
constexpr double kNamedShare = 0.01;

/// The directions of the varied parameters that move the model, scaled to columns of length 1.
struct ScaledTriangle {
  std::vector<std::int32_t> moving;  // columns of R that are not zero
  VectorXd lengths;                  // of those columns
  VectorXd singular_values;          // falling
  MatrixXd directions;               // one column per singular value, one row per moving parameter
  Index determined = 0;              // how many singular values stand out of rounding

  Index Count() const { return static_cast<Index>(moving.size()); }
};

/// Singular values below this share of the greatest are rounding: the columns carry the accuracy of the derivatives, and the
/// sums over n points grow errors like the square root of n (Higham, Accuracy and Stability, 2002, chapters 2.8 and 19).
double RoundingShare(const FittedPoints& points, Index columns) {
  const double growth = std::max(64.0, std::sqrt(static_cast<double>(points.count)));
  return points.derivative_accuracy * growth * static_cast<double>(columns);
}

ScaledTriangle Decompose(const MatrixXd& r, const FittedPoints& points) {
  ScaledTriangle scaled;
  const VectorXd lengths = r.colwise().stableNorm();
  for (Index column = 0; column < r.cols(); ++column) {
    if (lengths(column) > 0) scaled.moving.push_back(static_cast<std::int32_t>(column));
  }
  if (scaled.moving.empty()) return scaled;

  MatrixXd columns(r.rows(), scaled.Count());
  scaled.lengths.resize(scaled.Count());
  for (Index i = 0; i < scaled.Count(); ++i) {
    const Index column = scaled.moving[static_cast<std::size_t>(i)];
    scaled.lengths(i) = lengths(column);
    columns.col(i) = r.col(column) / lengths(column);
  }
  SingularParts parts = SingularDirectionsOf(columns);
  scaled.singular_values = std::move(parts.values);
  scaled.directions = std::move(parts.v);
  const double limit = RoundingShare(points, scaled.Count()) * scaled.singular_values(0);
  scaled.determined = (scaled.singular_values.array() > limit).count();
  return scaled;
}

/// Combines the undetermined directions so that each names as few parameters as it can (reduced row echelon form with
/// complete pivoting): two pairs that trade separately stay two pairs.
MatrixXd SeparateDirections(MatrixXd rows) {
  std::vector<bool> used(static_cast<std::size_t>(rows.rows()), false);
  for (Index step = 0; step < rows.rows(); ++step) {
    Index pivot_row = -1;
    Index pivot_column = 0;
    for (Index row = 0; row < rows.rows(); ++row) {
      if (used[static_cast<std::size_t>(row)]) continue;
      Index column = 0;
      rows.row(row).cwiseAbs().maxCoeff(&column);
      if (pivot_row < 0 || std::abs(rows(row, column)) > std::abs(rows(pivot_row, pivot_column))) {
        pivot_row = row;
        pivot_column = column;
      }
    }
    used[static_cast<std::size_t>(pivot_row)] = true;
    rows.row(pivot_row) /= rows(pivot_row, pivot_column);
    for (Index row = 0; row < rows.rows(); ++row) {
      if (row != pivot_row) rows.row(row) -= rows(row, pivot_column) * rows.row(pivot_row);
    }
  }
  return rows;
}

SingularDirection NameDirection(const Eigen::RowVectorXd& shares, const ScaledTriangle& scaled,
                                double relative_singular_value) {
  std::vector<Index> order(static_cast<std::size_t>(shares.size()));
  std::iota(order.begin(), order.end(), Index{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](Index a, Index b) { return std::abs(shares(a)) > std::abs(shares(b)); });
  SingularDirection direction;
  direction.relative_singular_value = relative_singular_value;
  const double least = kNamedShare * shares.cwiseAbs().maxCoeff();
  for (const Index i : order) {
    if (std::abs(shares(i)) >= least)
      direction.parameters.push_back(scaled.moving[static_cast<std::size_t>(i)]);
  }
  return direction;
}

std::vector<SingularDirection> FindSingularDirections(const ScaledTriangle& scaled) {
  std::vector<SingularDirection> found;
  const Index lost = scaled.Count() - scaled.determined;
  if (lost == 0) return found;
  const MatrixXd rows = SeparateDirections(scaled.directions.rightCols(lost).transpose());
  for (Index i = 0; i < lost; ++i) {
    const Index value = scaled.determined + i;
    found.push_back(NameDirection(rows.row(i), scaled,
                                  scaled.singular_values(value) / scaled.singular_values(0)));
  }
  return found;
}

/// The varied parameters whose values the data determine.
std::vector<bool> DeterminedParameters(const ScaledTriangle& scaled, Index k) {
  std::vector<bool> determined(static_cast<std::size_t>(k), false);
  const Index lost = scaled.Count() - scaled.determined;
  for (Index i = 0; i < scaled.Count(); ++i) {
    determined[static_cast<std::size_t>(scaled.moving[static_cast<std::size_t>(i)])] =
        scaled.directions.row(i).tail(lost).stableNorm() <= kNoShare;
  }
  return determined;
}

/// V inv(S) over the determined directions, one row per varied parameter (zero for those that move nothing); a row over the
/// length of its column is what makes the parameter's errors. Kept apart from the lengths, which may be extreme.
MatrixXd ErrorRows(const ScaledTriangle& scaled, Index k) {
  MatrixXd rows = MatrixXd::Zero(k, scaled.determined);
  for (Index i = 0; i < scaled.Count(); ++i) {
    rows.row(scaled.moving[static_cast<std::size_t>(i)]) =
        scaled.directions.row(i).head(scaled.determined).array() /
        scaled.singular_values.head(scaled.determined).transpose().array();
  }
  return rows;
}

VectorXd ColumnLengths(const ScaledTriangle& scaled, Index k) {
  VectorXd lengths = VectorXd::Ones(k);
  for (Index i = 0; i < scaled.Count(); ++i)
    lengths(scaled.moving[static_cast<std::size_t>(i)]) = scaled.lengths(i);
  return lengths;
}

/// `variance` is what (J'J)^-1 is multiplied by.
void FillErrors(const ScaledTriangle& scaled, double variance, FitStatistics& statistics) {
  const Index k = statistics.varied;
  const auto size = static_cast<std::size_t>(k);
  const std::vector<bool> determined = DeterminedParameters(scaled, k);
  const MatrixXd rows = ErrorRows(scaled, k);
  const VectorXd lengths = ColumnLengths(scaled, k);
  const double deviation = std::sqrt(variance);
  for (std::size_t i = 0; i < size; ++i) {
    const auto row = static_cast<Index>(i);
    const double error = deviation * (rows.row(row).norm() / lengths(row));
    if (determined[i]) statistics.standard_errors[i] = error;
    for (std::size_t j = 0; j < size; ++j) {
      const auto other = static_cast<Index>(j);
      const double shared = rows.row(row).dot(rows.row(other));
      const double covariance = deviation / lengths(row) * shared * (deviation / lengths(other));
      statistics.determined_covariance[i * size + j] = covariance;
      if (!determined[i] || !determined[j]) continue;
      const double correlation = shared / (rows.row(row).norm() * rows.row(other).norm());
      statistics.covariance[i * size + j] = covariance;
      statistics.correlation[i * size + j] = i == j ? 1 : std::clamp(correlation, -1.0, 1.0);
    }
  }
}

/// But for constants of the data.
double MinusTwiceLogLikelihood(const FittedPoints& points, double rss) {
  const auto n = static_cast<double>(points.count);
  const FitWeighting& weighting = points.weighting;
  if (weighting.loss != FitLoss::Linear || n <= 0) return kUndefined;
  const bool absolute = weighting.errors == FitErrors::Absolute;
  if (weighting.weights == FitWeights::Counts)
    return absolute ? points.likelihood_term : kUndefined;
  const double of_residuals = absolute ? rss : n * std::log(rss / n);
  return weighting.weights == FitWeights::Relative ? of_residuals + points.likelihood_term
                                                   : of_residuals;
}

void FillQuality(const FittedPoints& points, FitStatistics& statistics) {
  const auto n = static_cast<double>(points.count);
  const auto dof = static_cast<double>(statistics.degrees_of_freedom);
  const double rss = statistics.sum_of_squares;
  const double tss = points.sum_about_mean;
  const bool free = statistics.degrees_of_freedom > 0;
  statistics.reduced_chi_squared = free ? rss / dof : kUndefined;
  statistics.residual_deviation = free ? std::sqrt(rss / dof) : kUndefined;
  statistics.r_squared = tss > 0 ? 1 - rss / tss : kUndefined;
  statistics.adjusted_r_squared = free && tss > 0 ? 1 - (rss / dof) / (tss / (n - 1)) : kUndefined;
  const bool absolute = points.weighting.errors == FitErrors::Absolute;
  statistics.chi_squared_probability =
      absolute ? ChiSquaredProbability(rss, statistics.degrees_of_freedom) : kUndefined;
  const double parameters = statistics.varied + (absolute ? 0 : 1);
  const double deviance = MinusTwiceLogLikelihood(points, rss);
  statistics.aic = deviance + 2 * parameters;
  statistics.bic = deviance + parameters * std::log(n);
  statistics.aicc = n - parameters - 1 > 0
                        ? statistics.aic + 2 * parameters * (parameters + 1) / (n - parameters - 1)
                        : kUndefined;
}

}  // namespace

FitFigures ComputeFitFigures(const ReducedJacobian& jacobian, const FittedPoints& points) {
  const Index k = jacobian.r.cols();
  FitFigures figures;
  FitStatistics& statistics = figures.statistics;
  statistics.points = points.count;
  statistics.varied = static_cast<std::int32_t>(k);
  statistics.degrees_of_freedom = std::max<std::int64_t>(points.count - k, 0);
  statistics.sum_of_squares = jacobian.sum_of_squares;
  statistics.weighting = points.weighting;
  statistics.mean_variance = points.mean_variance;
  FillQuality(points, statistics);
  const bool absolute = points.weighting.errors == FitErrors::Absolute;
  const double of_residuals = absolute ? 1 : statistics.reduced_chi_squared;
  statistics.unit_variance = points.robust_variance ? points.robust_measurement : of_residuals;
  const auto size = static_cast<std::size_t>(k);
  statistics.standard_errors.assign(size, kUndefined);
  statistics.covariance.assign(size * size, kUndefined);
  statistics.correlation.assign(size * size, kUndefined);
  statistics.determined_covariance.assign(size * size, kUndefined);
  if (k == 0 || !jacobian.r.allFinite()) return figures;

  const ScaledTriangle scaled = Decompose(jacobian.r, points);
  figures.singular_directions = FindSingularDirections(scaled);
  for (std::int32_t i = 0; i < k; ++i) {
    if (!std::binary_search(scaled.moving.begin(), scaled.moving.end(), i))
      figures.unmoved.push_back(i);
  }
  FillErrors(scaled, points.robust_variance.value_or(of_residuals), statistics);
  return figures;
}

bool NoBetterThanMean(const FitStatistics& statistics) {
  const double explained = statistics.r_squared;
  if (statistics.varied == 1) return explained < -kNoShare;
  const auto dof = static_cast<double>(statistics.degrees_of_freedom);
  const double needed = kChanceRatio * (1 - explained) * (statistics.varied - 1);
  return explained <= 0 || (dof > 0 && explained * dof < needed);
}

std::vector<std::int32_t> HardlyDetermined(const FitStatistics& statistics,
                                           std::span<const double> values, double part) {
  std::vector<std::int32_t> found;
  const std::size_t k = values.size();
  if (statistics.correlation.size() != k * k || statistics.standard_errors.size() != k)
    return found;
  for (std::size_t i = 0; i < k; ++i) {
    if (!(statistics.standard_errors[i] > part * std::abs(values[i]))) continue;
    for (std::size_t j = 0; j < k; ++j) {
      if (i == j || !(std::abs(statistics.correlation[i * k + j]) > kStrongCorrelation)) continue;
      found.push_back(static_cast<std::int32_t>(i));
      break;
    }
  }
  return found;
}

}  // namespace tarnwick
