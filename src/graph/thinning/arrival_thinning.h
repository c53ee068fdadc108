// Thins a line that goes through points in the order in which they came. Pure arithmetic.
#pragma once

#include "graph/thinning/arrival_line.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// What ThinLine makes of a line along the chain: of all points that follow one another within a pixel column the first, the
/// lowest, the highest and the last. Runs of points that lie in one column are not read: their boxes tell all. The view shows Y.
ThinnedLine ThinArrivals(const ArrivalLine& line, const ThinningView& view);

}  // namespace tarnwick
