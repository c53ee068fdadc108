#include "analysis/smoothing.h"

#include <Eigen/Dense>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

#include "analysis/convolution.h"
#include "base/error.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

/// Steps that differ by less than this part of their mean are taken for even.
constexpr double kEven = 1e-6;
constexpr std::size_t kBetweenCancels = 1024;  // points

void Check(const LocalPolynomial& local, std::size_t points) {
  CheckWindow(local.window, points);
  if (local.order < 0 || local.order > 9 || local.order >= local.window)
    throw Error("The order is 0 to 9, and less than the window's points.");
  if (local.derivative < 0 || local.derivative > 2 || local.derivative > local.order)
    throw Error("The derivative is 0 to 2, and not above the order.");
}

double Factorial(int n) {
  return n < 2 ? 1 : n * Factorial(n - 1);
}

/// The weights with which the values at `x` make up the derivative at `at` of their best polynomial; undefined ones where these
/// have none.
Eigen::VectorXd WeightsAt(std::span<const double> x, double at, const LocalPolynomial& local) {
  const auto points = static_cast<Eigen::Index>(x.size());
  const double reach = std::max(at - x.front(), x.back() - at);
  // A mean needs no two X.
  if (local.order > 0 && !(reach > 0)) return Eigen::VectorXd::Constant(points, kUndefined);
  Eigen::MatrixXd powers(points, local.order + 1);
  for (Eigen::Index i = 0; i < points; ++i) {
    const double u = (x[static_cast<std::size_t>(i)] - at) / reach;
    double power = 1;
    for (Eigen::Index k = 0; k <= local.order; ++k, power *= u) powers(i, k) = power;
  }
  const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> qr(powers);
  if (qr.rank() <= local.order) return Eigen::VectorXd::Constant(points, kUndefined);
  const Eigen::MatrixXd inverse = qr.solve(Eigen::MatrixXd::Identity(points, points));
  return inverse.row(local.derivative).transpose() *
         (Factorial(local.derivative) / std::pow(reach, local.derivative));
}

double Weighed(const double* y, const Eigen::VectorXd& weights) {
  double sum = 0;
  for (Eigen::Index i = 0; i < weights.size(); ++i) sum += weights[i] * y[i];
  return sum;
}

/// Puts behind `to` the sum of weights[k] y[i + k] for every i below `made`.
void AppendConvolved(std::span<const double> y, const Eigen::VectorXd& weights, std::size_t made,
                     std::vector<double>& to) {
  constexpr std::size_t kBlock = 512;  // stays in the first cache
  std::array<double, kBlock> block;
  const auto count = static_cast<std::size_t>(weights.size());
  for (std::size_t begin = 0; begin < made; begin += kBlock) {
    const std::span<double> sums = std::span(block).first(std::min(kBlock, made - begin));
    Convolve(y.subspan(begin), {weights.data(), count}, sums);
    to.insert(to.end(), sums.begin(), sums.end());
  }
}

}  // namespace

int LargestWindow(std::size_t points) {
  const auto most =
      static_cast<int>(std::min<std::size_t>(points, std::numeric_limits<int>::max()));
  return most - 1 + most % 2;
}

void CheckWindow(int window, std::size_t points) {
  if (window < 1 || window % 2 == 0) throw Error("The window is an odd number of points.");
  if (static_cast<std::size_t>(window) > points) {
    throw Error("The window of " + std::to_string(window) +
                " points is wider than the data: " + std::to_string(points) + " points.");
  }
}

bool IsEvenlySpaced(std::span<const double> x, double share) {
  const double step = (x.back() - x.front()) / static_cast<double>(x.size() - 1);
  constexpr std::size_t kBlock = 4096;  // looked at as a whole, so that it is done by vectors
  for (std::size_t begin = 1; begin < x.size(); begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, x.size());
    int uneven = 0;
    for (std::size_t i = begin; i < end; ++i)
      uneven |= static_cast<int>(!(std::abs(x[i] - x[i - 1] - step) <= share * step));
    if (uneven != 0) return false;
  }
  return true;
}

Smoothed SmoothByPolynomials(std::span<const double> x, std::span<const double> y,
                             const LocalPolynomial& local, const CancelPoint& cancel) {
  Check(local, x.size());
  const auto window = static_cast<std::size_t>(local.window);
  const std::size_t half = window / 2;
  const std::size_t last = x.size() - window;  // where the last window begins
  const auto of_window = [&](std::size_t begin, std::size_t at) {
    return WeightsAt(x.subspan(begin, window), x[at], local);
  };
  const Eigen::VectorXd middle = of_window(last / 2, last / 2 + half);
  Smoothed result{.y = {}, .noise_gain = middle.norm()};
  result.y.reserve(x.size());
  for (std::size_t i = 0; i < half; ++i) result.y.push_back(Weighed(y.data(), of_window(0, i)));
  if (window > 1 && IsEvenlySpaced(x, kEven)) {
    AppendConvolved(y, middle, last + 1, result.y);
  } else {
    for (std::size_t begin = 0; begin <= last; ++begin) {
      if (begin % kBetweenCancels == 0) cancel.Pass();
      result.y.push_back(Weighed(y.data() + begin, of_window(begin, begin + half)));
    }
  }
  for (std::size_t i = last + half + 1; i < x.size(); ++i)
    result.y.push_back(Weighed(y.data() + last, of_window(last, i)));
  return result;
}

std::vector<double> RunningMedian(std::span<const double> y, int window,
                                  const CancelPoint& cancel) {
  CheckWindow(window, y.size());
  const std::size_t half = static_cast<std::size_t>(window) / 2;
  std::vector<double> sorted;
  const auto insert = [&](double value) {
    sorted.insert(std::ranges::lower_bound(sorted, value), value);
  };
  const auto erase = [&](double value) { sorted.erase(std::ranges::lower_bound(sorted, value)); };
  std::vector<double> medians;
  medians.reserve(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    if (i % kBetweenCancels == 0) cancel.Pass();
    const std::size_t reach = std::min({half, i, y.size() - 1 - i});
    const std::size_t earlier = i == 0 ? 0 : std::min({half, i - 1, y.size() - i});
    // From [i - 1 - earlier, i - 1 + earlier] to [i - reach, i + reach].
    if (i == 0) {
      insert(y[0]);
    } else {
      for (std::size_t k = i + earlier; k <= i + reach; ++k) insert(y[k]);
      for (std::size_t k = i - 1 - earlier; k < i - reach; ++k) erase(y[k]);
    }
    medians.push_back(sorted[sorted.size() / 2]);
  }
  return medians;
}

}  // namespace tarnwick
