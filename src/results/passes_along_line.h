// Where the line of a DataSet that turns back passes an X or a Y: several times, in the order in which it goes. Knows chains and
// ways; no DataSet.
#pragma once

#include <vector>

#include "analysis/interpolation.h"
#include "data/points/line_way.h"

namespace tarnwick {

/// What goes into the value of each pass of X = `x`, the first `most` of them; a point there passes once.
std::vector<Between> PassesOfX(const PointChain& points, const LineWay& way, double x,
                               std::size_t most);

/// The X of each pass of that level, the first `most` of them.
std::vector<double> PassesOfY(const PointChain& points, const LineWay& way, const Level& level,
                              std::size_t most);

}  // namespace tarnwick
