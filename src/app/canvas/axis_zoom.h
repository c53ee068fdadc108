// Ranges that an axis gets by zooming about a pixel and by being dragged. Arithmetic on one axis' map.
#pragma once

#include <optional>

#include "graph/axes/axis_scale.h"

namespace tarnwick {

struct AxisRange {
  double min = 0;
  double max = 1;
};

/// The range `factor` times as long (in decades on a logarithmic axis) in which the value at `pixel` stays at its pixel.
/// Nothing where the result could not be drawn: not finite, or narrower than doubles can tell apart.
std::optional<AxisRange> ZoomedRange(const AxisScale& scale, double pixel, double factor);

/// The range after dragging the picture by so many pixels (right and down are positive). Nothing as above.
std::optional<AxisRange> DraggedRange(const AxisScale& scale, double pixels);

/// The range between two pixels of the axis, in either order. Nothing as above.
std::optional<AxisRange> SpannedRange(const AxisScale& scale, double first, double second);

/// The range of the same length in which the value can be seen, a tenth of the length from the nearer end; nothing when it
/// is in range already, and as above.
std::optional<AxisRange> RangeShowing(const AxisScale& scale, double value);

}  // namespace tarnwick
