#include "fit/residuals/sums_of_y.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace tarnwick {
namespace {

constexpr std::size_t kSample = 64;
constexpr std::size_t kBlock = 1024;
constexpr std::size_t kStrands = 4;

double MeanOfSample(std::span<const double> y) {
  const std::size_t step = (y.size() - 1) / kSample + 1;
  double sum = 0;
  double count = 0;
  for (std::size_t i = 0; i < y.size(); i += step, ++count) sum += y[i];
  return sum / count;
}

/// A sum in interleaved strands: rounding grows with the number of blocks only.
struct Strands {
  std::array<double, kStrands> values{};
  double Total() const { return std::accumulate(values.begin(), values.end(), 0.0); }
};

template <bool kWeighted>
SumsOfY Pass(const double* y, const double* w, std::size_t count, double shift) {
  double squares = 0;
  double weight = 0;
  double off = 0;
  double off_squares = 0;
  for (std::size_t begin = 0; begin < count; begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, count);
    Strands of_squares, of_weight, of_off, of_off_squares;
    const auto add = [&](std::size_t i, std::size_t strand) {
      const double share = kWeighted ? w[i] * w[i] : 1;
      const double distance = y[i] - shift;
      of_squares.values[strand] += share * y[i] * y[i];
      if constexpr (kWeighted) of_weight.values[strand] += share;
      of_off.values[strand] += share * distance;
      of_off_squares.values[strand] += share * distance * distance;
    };
    std::size_t i = begin;
    for (; i + kStrands <= end; i += kStrands) {
      for (std::size_t strand = 0; strand < kStrands; ++strand) add(i + strand, strand);
    }
    for (; i < end; ++i) add(i, 0);
    squares += of_squares.Total();
    weight += of_weight.Total();
    off += of_off.Total();
    off_squares += of_off_squares.Total();
  }
  if constexpr (!kWeighted) weight = static_cast<double>(count);
  return {squares, weight > 0 ? std::max(off_squares - off * off / weight, 0.0) : 0};
}

}  // namespace

SumsOfY SumUpY(std::span<const double> y, std::span<const double> weights) {
  if (y.empty()) return {};
  const double shift = MeanOfSample(y);
  return weights.empty() ? Pass<false>(y.data(), nullptr, y.size(), shift)
                         : Pass<true>(y.data(), weights.data(), y.size(), shift);
}

}  // namespace tarnwick
