#include "fit/judge/open_parameters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

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
/// An error of this part of its value leaves a parameter to others that make up for it.
constexpr double kTraded = 0.5;
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
  const auto square = [](double left, double right) {
    return std::isfinite(left) ? (right - left) * (right - left) : 0;
  };
  return std::sqrt(
      std::inner_product(from.begin(), from.end(), to.begin(), 0.0, std::plus(), square));
}

/// Steps away from the values found, and how far the curve goes with them.
class Steps {
 public:
  Steps(ModelResiduals& residuals, std::span<const double> values, const FitStatistics& statistics,
        const ResidualSample& sample)
      : residuals_(residuals),
        values_(values.data(), static_cast<Eigen::Index>(values.size())),
        statistics_(statistics),
        sample_(sample),
        here_(residuals.Residuals(values, kPatternPoints)),
        least_(kRounding * residuals.NormOfY()) {}

  double Size(Eigen::Index i) const { return std::abs(values_(i)); }
  double Error(Eigen::Index i) const {
    return statistics_.standard_errors.at(static_cast<std::size_t>(i));
  }
  /// One error of a parameter, the others going along as the covariance has it.
  Eigen::VectorXd ErrorOf(Eigen::Index i) const {
    const Eigen::Index k = values_.size();
    const double* const column = statistics_.determined_covariance.data() + i * k;
    return Eigen::Map<const Eigen::VectorXd>(column, k) / Error(i);
  }
  /// One parameter alone.
  Eigen::VectorXd Alone(Eigen::Index i, double way) const {
    return way * Eigen::VectorXd::Unit(values_.size(), i);
  }

  /// The curve's way as the derivatives have it.
  double Promised(const Eigen::VectorXd& step) const { return (sample_.jacobian * step).norm(); }
  /// A smaller way is lost in rounding.
  double Least() const { return least_; }
  /// The curve's way; infinite where the model has no value.
  double Way(const Eigen::VectorXd& step) {
    try {
      const Eigen::VectorXd p = values_ + step;
      const std::span<const double> values(p.data(), static_cast<std::size_t>(p.size()));
      const double change = Change(here_, residuals_.Residuals(values, kPatternPoints));
      return std::isnan(change) ? HUGE_VAL : change;
    } catch (const EIntegerDivision&) {
      return HUGE_VAL;
    }
  }

  /// The parameters for which `holds`, of those whose errors reach farther than the curve is straight.
  template <typename Test>
  std::vector<std::int32_t> Where(Test holds) const {
    std::vector<std::int32_t> found;
    for (Eigen::Index i = 0; i < values_.size(); ++i) {
      if (!(Error(i) > kStraight * Size(i)) || !std::isfinite(Error(i))) continue;
      if (holds(i)) found.push_back(static_cast<std::int32_t>(i));
    }
    return found;
  }

 private:
  ModelResiduals& residuals_;
  Eigen::Map<const Eigen::VectorXd> values_;
  const FitStatistics& statistics_;
  const ResidualSample& sample_;
  std::vector<double> here_;
  double least_;
};

}  // namespace

std::vector<std::int32_t> OpenParameters(ModelResiduals& residuals, std::span<const double> values,
                                         const FitStatistics& statistics,
                                         const ResidualSample& sample) {
  Steps steps(residuals, values, statistics, sample);
  /// The curve does not follow a step to one side or the other.
  const auto is_free = [&](const Eigen::VectorXd& step, double bounded) {
    const double promised = steps.Promised(step);
    if (!(promised > steps.Least()) || !std::isfinite(promised)) return false;
    return steps.Way(step) < bounded * promised || steps.Way(-step) < bounded * promised;
  };
  return steps.Where([&](Eigen::Index i) {
    return is_free(kReach * steps.ErrorOf(i), kBounded) ||
           is_free(steps.Alone(i, kReach * steps.Error(i)), kBoundedAlone);
  });
}

std::vector<std::int32_t> LimitParameters(ModelResiduals& residuals, std::span<const double> values,
                                          const FitStatistics& statistics,
                                          const ResidualSample& sample) {
  Steps steps(residuals, values, statistics, sample);
  return steps.Where([&](Eigen::Index i) {
    const Eigen::VectorXd step = steps.ErrorOf(i);
    const double promised = std::max(steps.Promised(step), steps.Least());
    const double bound = kAnotherCurve * promised;
    const bool reaches_far = steps.Error(i) > kReachesFar * steps.Size(i);
    if (reaches_far && (steps.Way(step) > bound || steps.Way(-step) > bound)) return true;
    // Nearly to 0, where the derivatives have it many errors away.
    const double errors_off = steps.Size(i) / steps.Error(i);
    const Eigen::VectorXd home =
        steps.Alone(i, values[static_cast<std::size_t>(i)] * (kNearZero - 1));
    return steps.Way(home) < std::min(kReach, kBounded * errors_off) * promised;
  });
}

std::vector<std::int32_t> TradedParameters(const FitStatistics& statistics,
                                           std::span<const double> values,
                                           const ResidualSample& sample) {
  std::vector<std::int32_t> traded = HardlyDetermined(statistics, values, kTraded);
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
