// Finds the pixels that carry a symbol: points that share a pixel are drawn once. Pure arithmetic.
#pragma once

#include <vector>

#include <QPoint>
#include <QRect>

#include "graph/thinning/thinning.h"

namespace tarnwick {

/// What hides a symbol besides another one at the same pixel.
struct SymbolHiding {
  /// Where points crowd, one between two drawn ones of its pixel column that are at most this many rows apart is hidden; 1
  /// hides none.
  int rows = 1;
};

/// The distinct pixels inside `area` (whole pixels of the view's maps) that show a point, in the order of the points.
/// Where points crowd most are not read: the extremes kept with them tell that nothing new would be seen.
std::vector<QPoint> OccupiedPixels(const PointChain& points, const ThinningView& view,
                                   const QRect& area, SymbolHiding hiding = {});

}  // namespace tarnwick
