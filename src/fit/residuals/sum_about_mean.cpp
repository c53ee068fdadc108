#include "fit/residuals/sum_about_mean.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace tarnwick {
namespace {

/// Sum of term(i) for i < count in eight interleaved strands per block: as fast as memory, and rounding grows with the number
/// of blocks only.
template <class Term>
double SumOf(std::size_t count, Term term) {
  constexpr std::size_t kBlock = 1024;
  constexpr std::size_t kStrands = 8;
  double total = 0;
  for (std::size_t begin = 0; begin < count; begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, count);
    const std::size_t whole = begin + (end - begin) / kStrands * kStrands;
    std::array<double, kStrands> strands{};
    for (std::size_t i = begin; i < whole; i += kStrands) {
      for (std::size_t strand = 0; strand < kStrands; ++strand) strands[strand] += term(i + strand);
    }
    for (std::size_t i = whole; i < end; ++i) strands[0] += term(i);
    total += std::accumulate(strands.begin(), strands.end(), 0.0);
  }
  return total;
}

}  // namespace

double SumAboutMean(std::span<const double> y, std::span<const double> w) {
  if (y.empty()) return 0;
  if (w.empty()) {
    const double mean =
        SumOf(y.size(), [&](std::size_t i) { return y[i]; }) / static_cast<double>(y.size());
    return SumOf(y.size(), [&](std::size_t i) { return (y[i] - mean) * (y[i] - mean); });
  }
  const double whole = SumOf(w.size(), [&](std::size_t i) { return w[i] * w[i]; });
  if (!(whole > 0)) return 0;
  const double mean = SumOf(y.size(), [&](std::size_t i) { return w[i] * w[i] * y[i]; }) / whole;
  return SumOf(y.size(), [&](std::size_t i) {
    const double rest = w[i] * (y[i] - mean);
    return rest * rest;
  });
}

}  // namespace tarnwick
