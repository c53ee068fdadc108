// In what order the values of a column stand. Knows numbers only.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tarnwick {

/// They only rise or only fall; equal ones may follow each other.
bool IsMonotone(const std::vector<double>& values);

/// More than two, each above the one before or each below it.
bool RisesThroughout(const std::vector<double>& values);

/// The same of so many that it is no chance: eight.
bool RisesBeyondChance(const std::vector<double>& values);

/// Different values, eight at least, nearly all pairs of which stand in one order (Kendall's rank correlation with the row is
/// above 0.8 or below -0.8).
bool MostlyRunsOn(std::span<const double> values);

/// As many steps up as down, more or less: no clock that begins anew at midnight.
bool IsInNoOrder(const std::vector<double>& values);

/// They turn back again and again, unlike an orbit, which comes back in a few turns.
bool TurnsOften(std::span<const double> values, std::size_t points_a_turn = 8);

/// Neighbours are alike: their correlation (lag one) is above this.
bool GoesOn(std::span<const double> values, double least_correlation = 0.5);

/// They rise several times from where they began, as the days do on which each animal was weighed.
bool RunsAnew(const std::vector<double>& values);

/// To the last digit, or as far as values are written that were rounded.
enum class Evenness { Exact, AsWritten };

/// Each is as far from the one before, and not equal to it.
bool StepsEvenly(std::span<const double> values, Evenness evenness = Evenness::Exact);

/// The same of all steps but a few, one in twenty at most.
bool MostlyStepsEvenly(std::span<const double> values);

/// What is left of values without those that equal one of them.
struct OtherValues {
  double low = 0;
  double high = 0;
  std::size_t count = 0;
};

/// The least, the greatest and the number of the values that are not `end`; low and high are 0 where there are none.
OtherValues ValuesBut(std::span<const double> values, double end);

/// The least or the greatest value where it comes several times and all others lie close together, far from it.
std::optional<double> RepeatedFarFromOthers(std::span<const double> values);

/// How many different ones there are; `most` + 1 where there are more than that.
std::size_t CountDifferent(std::span<const double> values, std::size_t most);

/// How far values go, from zero or among themselves; at least one.
double SizeOf(const std::vector<double>& values);

/// More rows than not have the value of the row before.
bool MostlyStands(const std::vector<double>& values);

}  // namespace tarnwick
