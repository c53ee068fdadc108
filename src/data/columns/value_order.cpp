#include "data/columns/value_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "base/quantile.h"

namespace tarnwick {

bool IsMonotone(const std::vector<double>& values) {
  return values.size() > 1 &&
         (std::ranges::is_sorted(values) || std::ranges::is_sorted(values, std::ranges::greater()));
}

bool RisesThroughout(const std::vector<double>& values) {
  return values.size() > 2 && IsMonotone(values) &&
         std::ranges::adjacent_find(values) == values.end();
}

bool RisesBeyondChance(const std::vector<double>& values) {
  constexpr std::size_t kFewest = 8;
  return values.size() >= kFewest && RisesThroughout(values);
}

bool MostlyRunsOn(std::span<const double> values) {
  constexpr std::size_t kFewest = 8, kMost = 300;  // every pair is looked at
  constexpr double kLeast = 0.8;
  values = values.first(std::min(values.size(), kMost));
  if (values.size() < kFewest) return false;
  std::int64_t rises = 0, falls = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    for (std::size_t before = 0; before < i; ++before) {
      if (values[before] == values[i]) return false;
      (values[before] < values[i] ? rises : falls) += 1;
    }
  }
  return std::abs(static_cast<double>(rises - falls)) > kLeast * static_cast<double>(rises + falls);
}

bool IsInNoOrder(const std::vector<double>& values) {
  std::size_t rises = 0;
  std::size_t falls = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    rises += values[i] > values[i - 1] ? 1 : 0;
    falls += values[i] < values[i - 1] ? 1 : 0;
  }
  return 4 * std::min(rises, falls) > values.size();
}

bool TurnsOften(std::span<const double> values, std::size_t points_a_turn) {
  std::size_t turns = 0;
  double last_step = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double step = values[i] - values[i - 1];
    if (step == 0) continue;
    turns += step * last_step < 0 ? 1 : 0;
    last_step = step;
  }
  return points_a_turn * turns > values.size();
}

bool GoesOn(std::span<const double> values, double least_correlation) {
  double mean = 0;
  for (const double value : values) mean += value / static_cast<double>(values.size());
  double all = 0, neighbours = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    all += (values[i] - mean) * (values[i] - mean);
    if (i > 0) neighbours += (values[i] - mean) * (values[i - 1] - mean);
  }
  return all > 0 && neighbours > least_correlation * all;
}

bool RunsAnew(const std::vector<double>& values) {
  constexpr std::size_t kShortest = 3;
  std::size_t falls = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] > values[i - 1]) continue;
    ++falls;
    if (values[i] == values[i - 1] || values[i] != values.front()) return false;
  }
  return falls > 0 && kShortest * (falls + 1) <= values.size();
}

bool StepsEvenly(std::span<const double> values, Evenness evenness) {
  const double kEven = evenness == Evenness::Exact ? 1e-6 : 0.01;
  if (values.size() < 3) return false;
  const double step = values[1] - values[0];
  for (std::size_t i = 2; i < values.size(); ++i) {
    if (std::abs(values[i] - values[i - 1] - step) > kEven * std::abs(step)) return false;
  }
  return step != 0;
}

bool MostlyStepsEvenly(std::span<const double> values) {
  constexpr double kEven = 1e-6;
  constexpr std::size_t kStepsPerOther = 20;
  if (StepsEvenly(values)) return true;
  if (values.size() < 3) return false;
  std::vector<double> steps;
  for (std::size_t i = 1; i < values.size(); ++i) steps.push_back(values[i] - values[i - 1]);
  std::vector<double> sorted = steps;
  const double usual = MedianOf(sorted);
  const auto others = static_cast<std::size_t>(std::ranges::count_if(
      steps, [usual](double step) { return std::abs(step - usual) > kEven * std::abs(usual); }));
  return usual != 0 && kStepsPerOther * others <= steps.size();
}

OtherValues ValuesBut(std::span<const double> values, double end) {
  OtherValues others;
  for (const double value : values) {
    if (value == end) continue;
    others.low = others.count == 0 ? value : std::min(others.low, value);
    others.high = others.count == 0 ? value : std::max(others.high, value);
    ++others.count;
  }
  return others;
}

std::optional<double> RepeatedFarFromOthers(std::span<const double> values) {
  constexpr std::size_t kFewestOthers = 20;
  constexpr std::ptrdiff_t kFewestRepeats = 2;
  constexpr double kWidthsApart = 5, kTimesLarger = 1000;
  if (values.size() < kFewestOthers) return std::nullopt;
  const auto ends = std::ranges::minmax(values);
  for (const double end : {ends.min, ends.max}) {
    const auto [low, high, others] = ValuesBut(values, end);
    const double gap = end < low ? low - end : end - high;
    const bool repeats = std::ssize(values) - static_cast<std::ptrdiff_t>(others) >= kFewestRepeats;
    // Below zero where nothing else is, or beyond any proportion; other values apart may be settings.
    const bool alone = (end < 0 && low >= 0) ||
                       std::abs(end) > kTimesLarger * std::max(std::abs(low), std::abs(high));
    if (repeats && alone && others >= kFewestOthers && gap > kWidthsApart * (high - low) &&
        high > low) {
      return end;
    }
  }
  return std::nullopt;
}

std::size_t CountDifferent(std::span<const double> values, std::size_t most) {
  std::vector<double> different;
  for (const double value : values) {
    if (std::ranges::find(different, value) != different.end()) continue;
    different.push_back(value);
    if (different.size() > most) break;
  }
  return different.size();
}

double SizeOf(const std::vector<double>& values) {
  const auto ends = std::ranges::minmax(values);
  return std::max({std::abs(ends.min), std::abs(ends.max), ends.max - ends.min});
}

bool MostlyStands(const std::vector<double>& values) {
  std::size_t changes = 0;
  for (std::size_t i = 1; i < values.size(); ++i) changes += values[i] != values[i - 1] ? 1 : 0;
  return 2 * changes < values.size();
}

}  // namespace tarnwick
