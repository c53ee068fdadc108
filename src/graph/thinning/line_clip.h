// Cuts polylines to a rectangle before a painter sees them: data may lie millions of pixels outside. Pure arithmetic.
#pragma once

#include <span>
#include <vector>

#include <QPolygonF>
#include <QRectF>

#include "graph/thinning/thinning.h"

namespace tarnwick {

/// The pieces of the polyline inside `area`, in order. Segments are cut by the method of Liang and Barsky ("A new concept and
/// method for line clipping", ACM Trans. Graphics 3 (1984) 1). A polyline of one point inside gives one piece of one point.
std::vector<QPolygonF> ClipPolyline(std::span<const PixelPoint> points, const QRectF& area);

}  // namespace tarnwick
