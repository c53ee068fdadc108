// Ranges that an axis gets by zooming about a pixel and by being dragged. Arithmetic on one axis' map.
#pragma once

#include <optional>

#include "graph/axis_scale.h"

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

}  // namespace tarnwick
