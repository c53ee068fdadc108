#include "data/points/y_extremes.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace tarnwick {

namespace {

using PairMask = decltype(DoublePair{} == DoublePair{});
constexpr std::size_t kPair = 2;
constexpr std::size_t kRuns = 4;  // keep the comparisons from waiting for each other
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Run {
  DoublePair min{kInfinity, kInfinity};
  DoublePair max{-kInfinity, -kInfinity};
  PairMask whole{-1, -1};  // no NaN so far

  // A comparison with NaN is false.
  void Take(DoublePair values) {
    min = values < min ? values : min;
    max = values > max ? values : max;
    whole &= values >= DoublePair{-kInfinity, -kInfinity};
  }
  void Take(const Run& other) {
    min = other.min < min ? other.min : min;
    max = other.max > max ? other.max : max;
    whole &= other.whole;
  }
};

}  // namespace

YExtremes ExtremesOf(std::span<const double> values) {
  Run runs[kRuns];
  const double* next = values.data();
  std::size_t left = values.size();
  for (; left >= kRuns * kPair; left -= kRuns * kPair, next += kRuns * kPair) {
    for (std::size_t run = 0; run < kRuns; ++run) runs[run].Take(LoadPair(next + run * kPair));
  }
  for (; left >= kPair; left -= kPair, next += kPair) runs[0].Take(LoadPair(next));
  if (left != 0) runs[0].Take(DoublePair{*next, *next});
  runs[0].Take(runs[1]);
  runs[2].Take(runs[3]);
  runs[0].Take(runs[2]);
  const Run& all = runs[0];
  return {std::min(all.min[0], all.min[1]), std::max(all.max[0], all.max[1]),
          (all.whole[0] & all.whole[1]) == 0};
}

}  // namespace tarnwick
