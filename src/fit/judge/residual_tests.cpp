#include "fit/judge/residual_tests.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "fit/judge/distributions.h"

namespace tarnwick {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

/// What chance does less often is none.
constexpr double kImprobable = 1e-3;
/// A smooth shape is what models that miss leave most.
constexpr double kImprobableShape = 3e-3;
/// The squares of correlations of few points pass chi squared's tail a few times more often.
constexpr double kImprobableLags = 1e-4;
constexpr Index kLeastFreedom = 3;
/// What is left of a column beside others, relative to it, below which it depends on them.
constexpr double kDependent = 1e-6;
constexpr Index kLags = 10;
/// Each lag needs so many points.
constexpr Index kPointsPerLag = 4;
/// Numbers of polynomials that are tried for a shape.
constexpr Index kShapes[] = {1, 2, 3, 4, 6, 8};
/// So many of the tries go together: the probability of the least rises more slowly than their number.
constexpr double kKinPolynomials = 2;
constexpr double kKinWaves = 1.5;
/// Waves are looked for where there are so many points at most, which others tests serve well, and so many degrees of freedom.
constexpr Index kMostForWaves = 256;
constexpr Index kLeastForWaves = 6;
/// Fewer points show no correlation.
constexpr Index kLeastForNeighbours = 12;
/// Deviations of a trend in the size of residuals from which on it is taken into account, and told.
constexpr double kUnequal = 3;
constexpr double kClearlyUnequal = 4;
/// Errors that take such points for equal are no errors.
constexpr double kFarUnequal = 10;
/// Beside the others', a residual of none.
constexpr double kNoResidual = 1e-3;
/// X strays from even distances by more than this part of one.
constexpr double kUneven = 0.2;
/// With many points a correlation that changes no error by a fifth is beyond chance, too.
constexpr double kMisleading = 0.2;

/// Orthonormal columns, one added after the other (Gram and Schmidt, twice).
class Basis {
 public:
  Basis(Index rows, Index most) : columns_(rows, most) {}

  /// Adds the direction of what the columns so far leave of `column`, unless that is but rounding.
  bool Add(const VectorXd& column) {
    const double length = column.norm();
    const VectorXd rest = Rest(column);
    if (!(rest.norm() > kDependent * length) || count_ == columns_.cols()) return false;
    columns_.col(count_++) = rest.normalized();
    return true;
  }
  VectorXd Rest(VectorXd column) const {
    for (int round = 0; round < 2; ++round) column -= Columns() * (Columns().transpose() * column);
    return column;
  }
  Index Count() const { return count_; }
  Eigen::Ref<const MatrixXd> Columns() const { return columns_.leftCols(count_); }

 private:
  MatrixXd columns_;
  Index count_ = 0;
};

Basis ModelBasis(const MatrixXd& jacobian, Index room) {
  Basis basis(jacobian.rows(), jacobian.cols() + room);
  for (Index j = 0; j < jacobian.cols(); ++j) basis.Add(jacobian.col(j));
  return basis;
}

struct Correlation {
  double value = 0;
  double mean = 0;
  double variance = 0;
  double Deviations() const { return (value - mean) / std::sqrt(variance); }
};

/// e'Ae / e'e with A one half beside the diagonal, at `lag`; mean and variance from the traces of MA and (MA)^2, where
/// tr(MA) = -tr(Q'AQ) and tr((MA)^2) = tr(A^2) - 2 tr(Q'A^2Q) + tr((Q'AQ)^2).
Correlation CorrelationAt(Index lag, const VectorXd& e, const MatrixXd& q) {
  const Index n = e.size();
  MatrixXd aq = MatrixXd::Zero(n, q.cols());
  aq.topRows(n - lag) += 0.5 * q.bottomRows(n - lag);
  aq.bottomRows(n - lag) += 0.5 * q.topRows(n - lag);
  const MatrixXd qaq = q.transpose() * aq;
  const double first = -qaq.trace();
  const double second =
      0.5 * static_cast<double>(n - lag) - 2 * aq.squaredNorm() + qaq.squaredNorm();
  const auto freedom = static_cast<double>(n - q.cols());
  Correlation found;
  found.value = e.head(n - lag).dot(e.tail(n - lag)) / e.squaredNorm();
  found.mean = first / freedom;
  found.variance = 2 * (second - first * found.mean) / (freedom * (freedom + 2));
  return found;
}

void TestNeighbours(const VectorXd& e, const MatrixXd& q, ResidualFindings& findings) {
  const Index n = e.size();
  const Correlation next = CorrelationAt(1, e, q);
  // The greatest that any n numbers can have.
  const double limit = std::cos(std::numbers::pi / static_cast<double>(n + 1));
  if (next.value > kMisleading)
    findings.alike = BoundedProbability(next.value, limit, next.mean, next.variance);
  if (next.value < -kMisleading)
    findings.alternating = BoundedProbability(-next.value, limit, -next.mean, next.variance);
  const Index lags = std::min(kLags, n / kPointsPerLag);
  double deviations = 0;
  double strength = 0;
  for (Index lag = 1; lag <= lags; ++lag) {
    const Correlation one = CorrelationAt(lag, e, q);
    deviations += one.Deviations() * one.Deviations();
    strength += (one.value - one.mean) * (one.value - one.mean);
  }
  if (strength > kMisleading * kMisleading)
    findings.lagged = ChiSquaredProbability(deviations, lags);
}

/// The next Legendre polynomial along the points: (j+1) P_(j+1) = (2j+1) t P_j - j P_(j-1).
void NextPolynomial(Index j, const VectorXd& t, VectorXd& last, VectorXd& now) {
  const auto order = static_cast<double>(j);
  const VectorXd next = ((2 * order + 1) * t.cwiseProduct(now) - order * last) / (order + 1);
  last = now;
  now = next;
}

/// The least probable of several findings, each as probable as it would be alone.
class Rarest {
 public:
  void Try(double chance) {
    least_ = std::min(least_, chance);
    ++tried_;
  }
  /// That the least probable of so many is as improbable, `kin` of them being as good as one.
  double Chance(double kin = 1) const {
    return std::min(1.0, least_ * std::max(1.0, static_cast<double>(tried_) / kin));
  }

 private:
  double least_ = 1;
  int tried_ = 0;
};

/// How probable it is that `columns` directions take `taken` of `all` squares, of `freedom` directions.
double ChanceOfShare(double taken, double all, Index columns, Index freedom) {
  const Index left = freedom - columns;
  const double ratio = taken / static_cast<double>(columns) /
                       (std::max(all - taken, 0.0) / static_cast<double>(left));
  return VarianceRatioProbability(ratio, columns, left);
}

/// Polynomials in t, from -1 to 1, that the model does not hold.
double ChanceOfPolynomials(const VectorXd& e, Basis basis, const VectorXd& t) {
  const Index freedom = e.size() - basis.Count();
  VectorXd last = VectorXd::Zero(t.size());
  VectorXd now = VectorXd::Ones(t.size());
  double taken = 0;
  Rarest rarest;
  Index added = 0;
  for (Index j = 0; j < t.size() && added < std::end(kShapes)[-1] && added + 2 < freedom; ++j) {
    const bool is_new = basis.Add(now);
    NextPolynomial(j, t, last, now);
    if (!is_new) continue;
    ++added;
    taken += std::pow(basis.Columns().rightCols(1).col(0).dot(e), 2);
    if (std::ranges::find(kShapes, added) != std::end(kShapes))
      rarest.Try(ChanceOfShare(taken, e.squaredNorm(), added, freedom));
  }
  return rarest.Chance(kKinPolynomials);
}

/// The squares of e, which lies beside q, in the plane of what two columns have beside it.
double SquaresIn(const VectorXd& e, const MatrixXd& q, const VectorXd& one, const VectorXd& two) {
  const VectorXd in_one = q.transpose() * one;
  const VectorXd in_two = q.transpose() * two;
  const double a = one.squaredNorm() - in_one.squaredNorm();
  const double b = two.squaredNorm() - in_two.squaredNorm();
  const double c = one.dot(two) - in_one.dot(in_two);
  const double along_one = one.dot(e);
  const double along_two = two.dot(e);
  const double least = kDependent * static_cast<double>(one.size());
  if (a < least) return b < least ? 0 : along_two * along_two / b;
  const double determinant = a * b - c * c;
  if (determinant < least * a) return along_one * along_one / a;
  return (along_one * along_one * b - 2 * along_one * along_two * c + along_two * along_two * a) /
         determinant;
}

/// A wave along t, of one half to as many whole periods as half the points.
double ChanceOfWave(const VectorXd& e, const MatrixXd& q, const VectorXd& t) {
  const Index n = e.size();
  const Index freedom = n - q.cols();
  const VectorXd first_cosine = (0.5 * std::numbers::pi * t.array()).cos();
  const VectorXd first_sine = (0.5 * std::numbers::pi * t.array()).sin();
  VectorXd cosine = first_cosine;
  VectorXd sine = first_sine;
  Rarest rarest;
  for (Index half_periods = 1; half_periods < n; ++half_periods) {
    rarest.Try(ChanceOfShare(SquaresIn(e, q, cosine, sine), e.squaredNorm(), 2, freedom));
    const VectorXd next = cosine.cwiseProduct(first_cosine) - sine.cwiseProduct(first_sine);
    sine = sine.cwiseProduct(first_cosine) + cosine.cwiseProduct(first_sine);
    cosine = next;
  }
  return rarest.Chance(kKinWaves);
}

/// From -1 to 1.
VectorXd Scaled(const std::vector<double>& values) {
  const auto [low, high] = std::ranges::minmax(values);
  const Eigen::Map<const VectorXd> v(values.data(), static_cast<Index>(values.size()));
  return (v.array() - low) * (2 / (high - low)) - 1;
}

void TestShape(const VectorXd& e, const Basis& basis, const ResidualSample& sample,
               ResidualFindings& findings) {
  const auto n = static_cast<double>(e.size());
  std::vector<VectorXd> scales = {VectorXd::LinSpaced(e.size(), -1, 1)};
  if (const VectorXd t = Scaled(sample.x);
      t.allFinite() && (t - scales.front()).cwiseAbs().maxCoeff() > kUneven / n)
    scales.push_back(t);
  Rarest rarest;
  const bool waves = e.size() <= kMostForWaves && e.size() - basis.Count() >= kLeastForWaves;
  for (const VectorXd& t : scales) {
    rarest.Try(ChanceOfPolynomials(e, basis, t));
    if (waves) rarest.Try(ChanceOfWave(e, basis.Columns(), t));
  }
  if (const VectorXd t = Scaled(sample.curve); t.allFinite())
    rarest.Try(ChanceOfPolynomials(e, basis, t));
  findings.shape = rarest.Chance();
}

/// The point of the greatest externally studentised residual: its number.
Index TestPoints(const VectorXd& e, const ResidualSample& sample, const MatrixXd& q,
                 ResidualFindings& findings) {
  const auto n = static_cast<double>(e.size());
  const double freedom = n - static_cast<double>(q.cols());
  const double variance = e.squaredNorm() / freedom;
  FarthestPoint& farthest = findings.farthest = {};
  Index number = 0;
  for (Index i = 0; i < e.size(); ++i) {
    const double leverage = q.row(i).squaredNorm();
    const double own = 1 - leverage;
    if (!(own > kDependent)) continue;
    const double inner = e(i) * e(i) / (variance * own);  // freedom at most
    const double outer = std::sqrt(inner * (freedom - 1) / std::max(freedom - inner, 0.0));
    if (!(outer > farthest.deviations)) continue;
    number = i;
    farthest = {sample.x[static_cast<std::size_t>(i)], outer, outer * std::sqrt(leverage / own)};
  }
  const auto left = static_cast<std::int64_t>(freedom) - 1;
  farthest.chance = std::min(1.0, n * StudentProbability(farthest.deviations, left));
  return number;
}

/// How the size of residuals changes along a scale.
struct Scatter {
  VectorXd sizes;  ///< the deviation of each, up to a factor
  double deviations = 0;
  double times = 1;  ///< from one end of the scale to the other
};

/// A straight line through the logarithms of residuals of scatter alone, each beside its own leverage: those of normal errors
/// have a deviation of pi / sqrt(8) (Harvey, Econometrica 44 (1976), 461).
Scatter ScatterAlong(const VectorXd& t, const VectorXd& e, const MatrixXd& q) {
  const double least = kNoResidual * std::sqrt(e.squaredNorm() / static_cast<double>(e.size()));
  const Eigen::ArrayXd own = 1 - q.rowwise().squaredNorm().array();
  // A point that the curve is bound to hit has no residual to tell from.
  const Eigen::ArrayXd counts = (own > kDependent).cast<double>();
  const Eigen::ArrayXd logarithms = (e.array().abs() / own.max(kDependent).sqrt()).max(least).log();
  const double middle = (counts * t.array()).sum() / counts.sum();
  const Eigen::ArrayXd places = counts * (t.array() - middle);
  const double slope = (places * logarithms).sum() / places.square().sum();
  const double deviation = std::numbers::pi / std::sqrt(8 * places.square().sum());
  return {(slope * t.array()).exp().matrix(), std::abs(slope) / deviation,
          std::exp(std::abs(slope) * (t.maxCoeff() - t.minCoeff()))};
}

/// Along the points or the curve's height, where it changes more; sizes are empty where it hardly does.
Scatter FindScatter(const VectorXd& e, const MatrixXd& q, const ResidualSample& sample) {
  Scatter found;
  if (e.size() < kLeastForNeighbours) return found;
  for (const VectorXd& t : {VectorXd(VectorXd::LinSpaced(e.size(), -1, 1)), Scaled(sample.curve)}) {
    if (!t.allFinite()) continue;
    Scatter along = ScatterAlong(t, e, q);
    if (along.deviations > std::max(found.deviations, kUnequal)) found = std::move(along);
  }
  return found;
}

/// The same, unless it is one point that stands out, and the curve that it bends, that make it look so.
Scatter FindScatterOfMany(const VectorXd& e, const Basis& basis, const ResidualSample& sample) {
  Scatter found = FindScatter(e, basis.Columns(), sample);
  if (found.times <= 1) return found;
  ResidualFindings findings;
  const Index farthest = TestPoints(e, sample, basis.Columns(), findings);
  if (!OnePointStandsOut(findings)) return found;
  Basis without = basis;
  without.Add(VectorXd::Unit(e.size(), farthest));
  if (FindScatter(without.Rest(e), without.Columns(), sample).times <= 1) return {};
  return found;
}

/// The tests proper, on residuals that scatter alike.
void Test(const ResidualSample& sample, const VectorXd& e, const Basis& basis,
          ResidualFindings& findings) {
  const MatrixXd q = basis.Columns();
  if (e.size() >= kLeastForNeighbours) TestNeighbours(e, q, findings);
  TestPoints(e, sample, q, findings);
  TestShape(e, basis, sample, findings);
}

/// Where it may be chance that residuals scatter unequally, weights that make them alike would let chance stand out.
void KeepWhatBothFind(const ResidualFindings& other, ResidualFindings& findings) {
  findings.alike = std::max(findings.alike, other.alike);
  findings.alternating = std::max(findings.alternating, other.alternating);
  findings.lagged = std::max(findings.lagged, other.lagged);
  findings.shape = std::max(findings.shape, other.shape);
  if (other.farthest.chance > findings.farthest.chance) findings.farthest = other.farthest;
}

}  // namespace

ResidualFindings TestResiduals(const ResidualSample& sample) {
  ResidualFindings findings;
  const auto n = static_cast<Index>(sample.residuals.size());
  const VectorXd residuals = Eigen::Map<const VectorXd>(sample.residuals.data(), n);
  if (!sample.jacobian.allFinite() || !residuals.allFinite()) return findings;
  const Basis basis = ModelBasis(sample.jacobian, std::end(kShapes)[-1]);
  const Index freedom = n - basis.Count();
  if (freedom < kLeastFreedom) return findings;
  const double size = residuals.cwiseAbs().maxCoeff();
  if (!(size > 0)) return findings;
  const VectorXd e = basis.Rest(residuals / size);
  if (!(e.squaredNorm() > 0)) return findings;
  findings.freedom = freedom;
  const Scatter scatter = FindScatterOfMany(e, basis, sample);
  if (scatter.times <= 1) {
    Test(sample, e, basis, findings);
    return findings;
  }
  // Each in its own deviation they can be compared.
  const VectorXd weights = scatter.sizes.cwiseInverse();
  const Basis weighted = ModelBasis(weights.asDiagonal() * sample.jacobian, std::end(kShapes)[-1]);
  Test(sample, weighted.Rest(weights.cwiseProduct(e)), weighted, findings);
  if (scatter.deviations > kClearlyUnequal) {
    findings.unequal_scatter = scatter.times;
    return findings;
  }
  ResidualFindings alike;
  Test(sample, e, basis, alike);
  KeepWhatBothFind(alike, findings);
  return findings;
}

void AmongMany(std::size_t many, ResidualFindings& findings) {
  for (double* const chance : {&findings.alike, &findings.alternating, &findings.lagged,
                               &findings.shape, &findings.farthest.chance})
    *chance = std::min(1.0, *chance * static_cast<double>(many));
}

bool FollowsShape(const ResidualFindings& findings) {
  return findings.alike < kImprobable || findings.lagged < kImprobableLags ||
         findings.shape < kImprobableShape;
}

bool Alternates(const ResidualFindings& findings) {
  return findings.alternating < kImprobable;
}

bool ScattersUnequally(const ResidualFindings& findings) {
  return findings.unequal_scatter > kFarUnequal;
}

bool OnePointStandsOut(const ResidualFindings& findings) {
  return findings.farthest.chance < kImprobable;
}

bool OnePointBends(const ResidualFindings& findings) {
  return OnePointStandsOut(findings) && findings.farthest.pull > 1;
}

bool HintsAtPattern(const ResidualFindings& findings, double chance) {
  return std::min({findings.shape, findings.alike, findings.alternating, findings.lagged}) < chance;
}

bool HintsAtPoint(const ResidualFindings& findings, double chance) {
  return findings.farthest.chance < chance && findings.farthest.pull > 1;
}

}  // namespace tarnwick
