#include "analysis/histogram.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/quantile.h"

namespace tarnwick {
namespace {

constexpr double kMostByRule = 200;

std::size_t BinOf(double value, const Histogram& histogram) {
  // By halves: the whole range of numbers has no width that is one.
  const double share = (value / 2 - histogram.first / 2) / (histogram.width / 2);
  const auto bin = static_cast<std::size_t>(share);
  return std::min(bin, histogram.counts.size() - 1);
}

}  // namespace

std::vector<double> FiniteOf(std::span<const double> values) {
  std::vector<double> finite;
  finite.reserve(values.size());
  std::ranges::copy_if(values, std::back_inserter(finite),
                       [](double v) { return std::isfinite(v); });
  return finite;
}

std::size_t BinsFor(std::span<double> values) {
  if (values.empty()) return 0;
  const auto count = static_cast<double>(values.size());
  const auto [least, greatest] = std::ranges::minmax(values);
  const double spread = QuantileOf(values, 0.75) - QuantileOf(values, 0.25);
  const double width = 2 * spread / std::cbrt(count);
  const double fewest = std::ceil(1 + std::log2(count));
  const double wanted = width > 0 ? std::ceil((greatest - least) / width) : fewest;
  return static_cast<std::size_t>(std::clamp(wanted, fewest, kMostByRule));
}

Histogram CountInBins(std::span<const double> values, std::size_t bins) {
  std::vector<double> finite = FiniteOf(values);
  Histogram histogram;
  histogram.left_out = values.size() - finite.size();
  if (finite.empty()) return histogram;
  const auto [least, greatest] = std::ranges::minmax(finite);
  bins = std::clamp<std::size_t>(bins == 0 ? BinsFor(finite) : bins, 1, kMostBins);
  histogram.first = least;
  histogram.width = greatest / static_cast<double>(bins) - least / static_cast<double>(bins);
  histogram.counts.assign(bins, 0);
  if (!(histogram.width > 0)) {
    // One bin about the value, wide enough to be told from it.
    histogram.width = std::max(std::abs(least) * 1e-6, 1e-300);
    histogram.first = least - histogram.width / 2;
    histogram.counts.assign(1, 0);
  }
  for (const double value : finite) ++histogram.counts[BinOf(value, histogram)];
  return histogram;
}

}  // namespace tarnwick
