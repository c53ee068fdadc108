#include "graph/axes/log_divisions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tarnwick {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

constexpr std::array<double, 2> kNone{1, 10};
constexpr std::array<double, 3> kOne{1, 5, 10};
constexpr std::array<double, 4> kTwo{1, 2, 5, 10};
constexpr std::array<double, 7> kFive{1, 1.5, 2, 3, 5, 7, 10};
constexpr std::array<double, 9> kSeven{1, 1.5, 2, 3, 4, 5, 6, 8, 10};
constexpr std::array<double, 11> kNine{1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8, 10};

struct DivisionSet {
  std::int32_t divisions;
  std::int32_t requested_from;
  double more_than;  ///< chosen when steps per decade exceed this
  std::span<const double> table;
};

/// From the finest down; the last takes whatever is left.
constexpr std::array<DivisionSet, 6> kSets{{{9, 9, 10, kNine},
                                            {7, 7, 8, kSeven},
                                            {5, 4, 6, kFive},
                                            {2, 2, 3, kTwo},
                                            {1, 1, 2, kOne},
                                            {0, 0, 0, kNone}}};

const DivisionSet& SetFor(std::int32_t requested) {
  const auto* found = std::find_if(kSets.begin(), kSets.end() - 1, [&](const DivisionSet& set) {
    return requested >= set.requested_from;
  });
  return *found;
}

/// log10(max / min), exact where the two differ by a power of ten.
long double Decades(double min, double max) {
  const DecimalSplit low = SplitDecimal(min);
  const DecimalSplit high = SplitDecimal(max);
  if (low.mantissa == high.mantissa) return high.exponent - low.exponent;
  return std::log10(static_cast<long double>(max) / min);
}

double OnTable(double mantissa, int exponent) {
  const double value = ScaledByTen(std::llround(mantissa * 10), exponent - 1);
  return std::clamp(value, kSmallest, kLargest);
}

/// The greatest entry not above the mantissa (1 when none is).
double EntryBelow(std::span<const double> table, double mantissa) {
  const auto above = std::upper_bound(table.begin(), table.end(), mantissa);
  return above == table.begin() ? 1 : *(above - 1);
}

/// The smallest entry not below the mantissa, which is at most the closing 10.
double EntryAbove(std::span<const double> table, double mantissa) {
  return *std::lower_bound(table.begin(), table.end() - 1, mantissa);
}

double HalfOf(double value) {
  return std::max(0.5 * value, kSmallest);
}

/// Linear bounds, kept above zero.
void FitNarrow(double o_min, double o_max, StepChoice choice, const StepLimits& limits,
               LogRange& range) {
  const NumericRange fitted = FitNumericRange(o_min, o_max, range.step, choice, limits);
  range.min = fitted.min > 0 ? fitted.min : HalfOf(o_min);
  range.max = fitted.max > range.min ? fitted.max : 2 * range.min;
  range.step = fitted.step;
}

}  // namespace

std::int32_t SnapLogDivisions(std::int32_t requested) {
  return SetFor(requested).divisions;
}

std::span<const double> LogDivisionTable(std::int32_t divisions) {
  return SetFor(divisions).table;
}

std::int32_t ChooseLogDivisions(double min, double max, std::int32_t min_steps) {
  const long double per_decade = min_steps / Decades(min, max);
  const auto* found = std::find_if(kSets.begin(), kSets.end() - 1, [&](const DivisionSet& set) {
    return per_decade > set.more_than;
  });
  return found->divisions;
}

bool DivisionsLabelled(double min, double max, std::int32_t divisions, bool narrow) {
  return narrow || Decades(min, max) * divisions < 10;
}

LogRange FitLogRange(double o_min, double o_max, const LogRange& current, StepChoice choice,
                     const StepLimits& limits) {
  constexpr long double kNarrowRatio = 4;
  constexpr long double kDecadesRatio = 30;
  LogRange range = current;
  range.min = o_min == o_max ? HalfOf(o_max) : o_min;
  range.max = o_max;
  const DecimalSplit low = SplitDecimal(range.min);
  DecimalSplit high = SplitDecimal(range.max);
  // An upper end that is a power of ten closes the decade below it, rather than open an empty one.
  if (high.mantissa == 1) high = {10, high.exponent - 1};
  if (choice == StepChoice::Automatic) {
    range.divisions = ChooseLogDivisions(range.min, range.max, limits.min_steps);
  }
  const long double ratio = static_cast<long double>(range.max) / range.min;
  range.narrow = ratio < kNarrowRatio;
  if (range.narrow) {
    FitNarrow(o_min, o_max, choice, limits, range);
  } else if (ratio >= kDecadesRatio) {
    range.min = OnTable(1, low.exponent);
    range.max = OnTable(10, high.exponent);
  } else {
    const auto table = LogDivisionTable(range.divisions);
    range.min = OnTable(EntryBelow(table, low.mantissa), low.exponent);
    range.max = OnTable(EntryAbove(table, high.mantissa), high.exponent);
  }
  range.division_labels = DivisionsLabelled(range.min, range.max, range.divisions, range.narrow);
  return range;
}

}  // namespace tarnwick
