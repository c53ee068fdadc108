// The area that a line covers which goes through points in the order in which they came, back and forth across many pixel
// columns: a noisy loop has as many vertices as points, which the eye cannot follow. Pure arithmetic.
#pragma once

#include <QRect>

#include "graph/thinning/arrival_line.h"
#include "graph/thinning/line_cover.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// Whether the line turns back so often that it closes over itself and is best drawn as the area that it covers. Others are
/// drawn as what ThinArrivals makes of them.
bool IsTangle(const ArrivalLine& line, const ThinningView& view, const QRect& area);

/// The pixels of `area` that the line passes. Points whose box is covered already are not read. The view shows Y, and both axes
/// can be used.
LineCover CoverOf(const ArrivalLine& line, const ThinningView& view, const QRect& area);

}  // namespace tarnwick
