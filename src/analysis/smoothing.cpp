#include "analysis/smoothing.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

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
  if (!(reach > 0)) return Eigen::VectorXd::Constant(points, kUndefined);
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

/// sums[i] += the sum of kCount weights[k] values[i + k]: the sums are loaded and stored once.
template <std::size_t kCount>
void AddProducts(const double* values, const double* weights, std::span<double> sums) {
  for (std::size_t i = 0; i < sums.size(); ++i) {
    double sum = sums[i];
    for (std::size_t k = 0; k < kCount; ++k) sum += weights[k] * values[i + k];
    sums[i] = sum;
  }
}

/// to[i] = the sum of weights[k] y[i + k]; `to` is 0 before.
void Convolve(std::span<const double> y, const Eigen::VectorXd& weights, std::span<double> to) {
  constexpr std::size_t kBlock = 512;  // stays in the first cache
  const auto count = static_cast<std::size_t>(weights.size());
  for (std::size_t begin = 0; begin < to.size(); begin += kBlock) {
    const std::span<double> sums = to.subspan(begin, std::min(kBlock, to.size() - begin));
    const double* const values = y.data() + begin;
    std::size_t k = 0;
    for (; k + 8 <= count; k += 8) AddProducts<8>(values + k, weights.data() + k, sums);
    for (; k + 3 <= count; k += 3) AddProducts<3>(values + k, weights.data() + k, sums);
    for (; k < count; ++k) AddProducts<1>(values + k, weights.data() + k, sums);
  }
}

}  // namespace

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
  Smoothed result;
  result.y.resize(x.size());
  const Eigen::VectorXd middle = of_window(last / 2, last / 2 + half);
  result.noise_gain = middle.norm();
  for (std::size_t i = 0; i < half; ++i) {
    result.y[i] = Weighed(y.data(), of_window(0, i));
    const std::size_t from_end = x.size() - 1 - i;
    result.y[from_end] = Weighed(y.data() + last, of_window(last, from_end));
  }
  const std::span<double> inner = std::span(result.y).subspan(half, last + 1);
  if (window > 1 && IsEvenlySpaced(x, kEven)) {
    Convolve(y, middle, inner);
  } else {
    for (std::size_t begin = 0; begin <= last; ++begin) {
      if (begin % kBetweenCancels == 0) cancel.Pass();
      inner[begin] = Weighed(y.data() + begin, of_window(begin, begin + half));
    }
  }
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
