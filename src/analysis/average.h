// The mean of several DataSets at the X of one of them. Knows no graph.
#pragma once

#include <span>

#include "data/series/data_series.h"

namespace tarnwick {

/// Gives `target` the X of `reference` and at each the mean of stored Y of those of `averaged` that have a value there
/// (Interpolation); 0 where none has. Base lines are not subtracted, errors are left out. The reference takes part where it is
/// among the averaged. Neither may be the target.
void Average(const TDataSeries& reference, std::span<const TDataSeries* const> averaged,
             TDataSeries& target);

}  // namespace tarnwick
