#include "data/points/y_extremes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

namespace tarnwick {

namespace {

// Compilers leave loops over minimum and maximum scalar for the sake of NaN; two values in one register say what is meant.
using Pair = double __attribute__((vector_size(16)));
using PairMask = decltype(Pair{} == Pair{});
constexpr std::size_t kPair = 2;
constexpr std::size_t kRuns = 4;  // keep the comparisons from waiting for each other
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Pair Load(const double* values) {
  Pair pair;
  std::memcpy(&pair, values, sizeof(pair));
  return pair;
}

struct Run {
  Pair min{kInfinity, kInfinity};
  Pair max{-kInfinity, -kInfinity};
  PairMask whole{-1, -1};  // no NaN so far

  // A comparison with NaN is false.
  void Take(Pair values) {
    min = values < min ? values : min;
    max = values > max ? values : max;
    whole &= values >= Pair{-kInfinity, -kInfinity};
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
    for (std::size_t run = 0; run < kRuns; ++run) runs[run].Take(Load(next + run * kPair));
  }
  for (; left >= kPair; left -= kPair, next += kPair) runs[0].Take(Load(next));
  if (left != 0) runs[0].Take(Pair{*next, *next});
  runs[0].Take(runs[1]);
  runs[2].Take(runs[3]);
  runs[0].Take(runs[2]);
  const Run& all = runs[0];
  return {std::min(all.min[0], all.min[1]), std::max(all.max[0], all.max[1]),
          (all.whole[0] & all.whole[1]) == 0};
}

}  // namespace tarnwick
