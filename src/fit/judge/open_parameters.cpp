#include "fit/judge/open_parameters.h"

#include <algorithm>
#include <cmath>

#include "expr/words/parser_exception.h"
#include "fit/judge/fit_statistics.h"
#include "fit/judge/residual_pattern.h"

namespace tarnwick {
namespace {

/// So many errors to either side.
constexpr double kReach = 2;
/// The change of the curve, to what its derivatives promise, below which the parameter is not bounded.
constexpr double kBounded = 0.5;
/// The same where it moves alone: one that others make up for near by may still be bounded.
constexpr double kBoundedAlone = 0.25;
/// Over a smaller error, relative to the value, a curve is as good as straight.
constexpr double kStraight = 0.1;
/// Part of the curve's spread.
constexpr double kWorthNaming = 0.3;
/// An error of a greater part of the value may reach where the curve is another one ...
constexpr double kReachesFar = 0.5;
/// ... which it is from so many times the change that the derivatives promise.
constexpr double kAnotherCurve = 10;
/// As good as 0, which a model may not stand.
constexpr double kNearZero = 1e-3;
/// A smaller change of the curve, relative to the curve, is lost in rounding.
constexpr double kRounding = 1e-10;

/// Where there is a value.
double Change(std::span<const double> from, std::span<const double> to) {
  double squares = 0;
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (std::isfinite(from[i])) squares += (to[i] - from[i]) * (to[i] - from[i]);
  }
  return std::sqrt(squares);
}

/// How far the curve at `p` is from where the residuals are `here`; infinite where the model has no value.
double ChangeAt(ModelResiduals& residuals, const Eigen::VectorXd& p, std::span<const double> here) {
  try {
    const std::span<const double> values(p.data(), static_cast<std::size_t>(p.size()));
    const double change = Change(here, residuals.Residuals(values, kPatternPoints));
    return std::isnan(change) ? HUGE_VAL : change;
  } catch (const EIntegerDivision&) {
    return HUGE_VAL;
  }
}

}  // namespace

std::vector<std::int32_t> OpenParameters(ModelResiduals& residuals, std::span<const double> values,
                                         const FitStatistics& statistics,
                                         const ResidualSample& sample) {
  std::vector<std::int32_t> open;
  const auto k = static_cast<Eigen::Index>(values.size());
  const Eigen::Map<const Eigen::VectorXd> p(values.data(), k);
  const std::vector<double> here = residuals.Residuals(values, kPatternPoints);
  const double least = kRounding * residuals.NormOfY();
  /// The curve does not follow a step to one side or the other.
  const auto is_free = [&](const Eigen::VectorXd& step, double bounded) {
    const double promised = (sample.jacobian * step).norm();
    if (!(promised > least) || !std::isfinite(promised)) return false;
    return ChangeAt(residuals, p + step, here) < bounded * promised ||
           ChangeAt(residuals, p - step, here) < bounded * promised;
  };
  for (Eigen::Index i = 0; i < k; ++i) {
    const double error = statistics.standard_errors.at(static_cast<std::size_t>(i));
    if (!(error > kStraight * std::abs(p(i))) || !std::isfinite(error)) continue;
    const Eigen::Map<const Eigen::VectorXd> covariance(
        statistics.determined_covariance.data() + i * k, k);
    if (is_free(kReach / error * covariance, kBounded) ||
        is_free(kReach * error * Eigen::VectorXd::Unit(k, i), kBoundedAlone))
      open.push_back(static_cast<std::int32_t>(i));
  }
  return open;
}

std::vector<std::int32_t> LimitParameters(ModelResiduals& residuals, std::span<const double> values,
                                          const FitStatistics& statistics,
                                          const ResidualSample& sample) {
  std::vector<std::int32_t> limits;
  const auto k = static_cast<Eigen::Index>(values.size());
  const Eigen::Map<const Eigen::VectorXd> p(values.data(), k);
  const std::vector<double> here = residuals.Residuals(values, kPatternPoints);
  const double least = kRounding * residuals.NormOfY();
  for (Eigen::Index i = 0; i < k; ++i) {
    const double error = statistics.standard_errors.at(static_cast<std::size_t>(i));
    if (!(error > kStraight * std::abs(p(i))) || !std::isfinite(error)) continue;
    const Eigen::Map<const Eigen::VectorXd> covariance(
        statistics.determined_covariance.data() + i * k, k);
    const Eigen::VectorXd step = covariance / error;
    const double promised = std::max((sample.jacobian * step).norm(), least);
    const double bound = kAnotherCurve * promised;
    const bool far =
        error > kReachesFar * std::abs(p(i)) && (ChangeAt(residuals, p + step, here) > bound ||
                                                 ChangeAt(residuals, p - step, here) > bound);
    // Nearly to 0, where the derivatives have it many errors away.
    const Eigen::VectorXd home = Eigen::VectorXd::Unit(k, i) * (p(i) * (kNearZero - 1));
    const double errors_off = std::abs(p(i)) / error;
    const bool near =
        ChangeAt(residuals, p + home, here) < std::min(kReach, kBounded * errors_off) * promised;
    if (far || near) limits.push_back(static_cast<std::int32_t>(i));
  }
  return limits;
}

std::vector<std::int32_t> TradedParameters(const FitStatistics& statistics,
                                           std::span<const double> values,
                                           const ResidualSample& sample) {
  std::vector<std::int32_t> traded = HardlyDetermined(statistics, values);
  if (traded.empty() || sample.curve.empty()) return {};
  const Eigen::Map<const Eigen::VectorXd> curve(sample.curve.data(),
                                                static_cast<Eigen::Index>(sample.curve.size()));
  const Eigen::Map<const Eigen::ArrayXd> weights(sample.weights.data(), curve.size());
  const double spread = ((curve.array() - curve.mean()) * weights).matrix().norm();
  std::erase_if(traded, [&](std::int32_t i) {
    const double moved =
        sample.jacobian.col(i).norm() * statistics.standard_errors[static_cast<std::size_t>(i)];
    return moved < kWorthNaming * spread;
  });
  return traded;
}

}  // namespace tarnwick
