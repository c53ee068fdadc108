#include "fit/judge/open_parameters.h"

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
/// Over a smaller error, relative to the value, a curve is as good as straight.
constexpr double kStraight = 0.1;
/// Part of the curve's spread.
constexpr double kWorthNaming = 0.1;
/// A smaller change of the curve, relative to the curve, is lost in rounding.
constexpr double kRounding = 1e-10;

double Change(std::span<const double> from, std::span<const double> to) {
  double squares = 0;
  for (std::size_t i = 0; i < from.size(); ++i) squares += (to[i] - from[i]) * (to[i] - from[i]);
  return std::sqrt(squares);
}

/// The model has a value everywhere at `p` and changes by less than `bound` from where the residuals are `here`.
bool StaysWithin(ModelResiduals& residuals, const std::vector<double>& p,
                 std::span<const double> here, double bound) {
  try {
    return Change(here, residuals.Residuals(p, kPatternPoints)) < bound;
  } catch (const EIntegerDivision&) {
    return false;  // no value is a bound
  }
}

}  // namespace

std::vector<std::int32_t> OpenParameters(ModelResiduals& residuals, std::span<const double> values,
                                         const FitStatistics& statistics,
                                         const ResidualSample& sample) {
  std::vector<std::int32_t> open;
  const std::size_t k = values.size();
  const std::vector<double> here = residuals.Residuals(values, kPatternPoints);
  for (std::size_t i = 0; i < k; ++i) {
    const double error = statistics.standard_errors.at(i);
    if (!(error > kStraight * std::abs(values[i])) || !std::isfinite(error)) continue;
    Eigen::VectorXd step(static_cast<Eigen::Index>(k));
    for (std::size_t j = 0; j < k; ++j)
      step(static_cast<Eigen::Index>(j)) =
          kReach * statistics.determined_covariance[j * k + i] / error;
    const double promised = (sample.jacobian * step).norm();
    if (!(promised > kRounding * residuals.NormOfY()) || !std::isfinite(promised)) continue;
    for (const double side : {-1.0, 1.0}) {
      std::vector<double> p(values.begin(), values.end());
      for (std::size_t j = 0; j < k; ++j) p[j] += side * step(static_cast<Eigen::Index>(j));
      if (!StaysWithin(residuals, p, here, kBounded * promised)) continue;
      open.push_back(static_cast<std::int32_t>(i));
      break;
    }
  }
  return open;
}

std::vector<std::int32_t> TradedParameters(const FitStatistics& statistics,
                                           std::span<const double> values,
                                           const ResidualSample& sample) {
  std::vector<std::int32_t> traded = HardlyDetermined(statistics, values);
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
