// Breaks in the line of a DataSet whose points were put in along it. Knows DataSets.
#pragma once

#include <cstddef>
#include <span>

namespace tarnwick {

class TDataSeries;

/// Breaks the line before these places among the points, which came in that order, none overwriting another; ascending. Without
/// any the line is whole.
void BreakBefore(TDataSeries& series, std::span<const std::size_t> places);

}  // namespace tarnwick
