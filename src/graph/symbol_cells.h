// Finds the pixels that carry a symbol: points that share a pixel are drawn once. Pure arithmetic.
#pragma once

#include <vector>

#include <QPoint>
#include <QRect>

#include "graph/thinning.h"

namespace tarnwick {

/// The distinct pixels inside `area` (whole pixels of the view's maps) that hold at least one point, in the order of the points.
/// Costs one pass over the points seen; a DataSet of few points is not slowed by a large area.
std::vector<QPoint> OccupiedPixels(const PointChain& points, const ThinningView& view,
                                   const QRect& area);

}  // namespace tarnwick
