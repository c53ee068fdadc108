// The area that a line covers which goes through points in the order in which they came, back and forth across many pixel
// columns: a noisy loop has as many vertices as points, which the eye cannot follow. Pure arithmetic.
#pragma once

#include <optional>

#include <QRect>

#include "graph/thinning/arrival_line.h"
#include "graph/thinning/line_cover.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// The pixels of `area` that the line passes, where it turns back so often that it closes over itself; nothing where it is
/// better drawn as what ThinArrivals makes of it. Points whose box is covered already are not read. The view shows Y.
std::optional<LineCover> CoverOfTangle(const ArrivalLine& line, const ThinningView& view,
                                       const QRect& area);

}  // namespace tarnwick
