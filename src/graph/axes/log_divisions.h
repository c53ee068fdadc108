// Divisions of a decade on a logarithmic axis, and the logarithmic autoscale, over plain numbers. Knows no axis.
#pragma once

#include <cstdint>
#include <span>

#include "graph/axes/nice_step.h"

namespace tarnwick {

/// The stored count for a requested one: 0, 1, 2 (also for 3), 5 (from 4 to 6), 7 (and 8), 9 from there on.
std::int32_t SnapLogDivisions(std::int32_t requested);

/// Mantissas inside a decade, ending with 10, for a stored count (snapped first).
std::span<const double> LogDivisionTable(std::int32_t divisions);

/// Divisions that give about `min_steps` ticks over the decades between min and max (0 < min < max).
std::int32_t ChooseLogDivisions(double min, double max, std::int32_t min_steps);

/// Whether divisions inside a decade are labelled: on a narrow range, and while decades x divisions < 10.
bool DivisionsLabelled(double min, double max, std::int32_t divisions, bool narrow);

/// What the logarithmic autoscale works on and answers with.
struct LogRange {
  double min = 1;
  double max = 10;
  double step = 0.2;  ///< numeric step, renewed on a narrow range
  std::int32_t divisions = 2;
  bool narrow = false;  ///< max / min < 4: linear bounds
  bool division_labels = true;
};

/// Fits data with 0 < o_min <= o_max: whole decades from a ratio of 30 on (a power of ten at either end stays the end),
/// divisions of a decade below, linear bounds
/// below 4 (there min stays above zero: half of o_min where the linear rule would reach zero). With
/// StepChoice::Automatic the divisions are chosen, else those of `current` are used.
LogRange FitLogRange(double o_min, double o_max, const LogRange& current, StepChoice choice,
                     const StepLimits& limits);

}  // namespace tarnwick
