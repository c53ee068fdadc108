// Which point of a DataSet lies nearest to a mouse X. Knows axis ranges and point chains, no pixels of the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/undefined.h"

namespace tarnwick {

class PointChain;
class TSeries;
class TxyGraph;

struct PickedPoint {
  std::int32_t number = 0;  ///< ID of the point, or its position from 1 on a regression curve
  double x = 0;
  double y = 0;           ///< corrected by the base line
  bool on_curve = false;  ///< found on the regression curve
  double y_error = kUndefined;
  double x_error = kUndefined;
};

/// True when a DataSet is shown through its regression curve alone: it has one, and neither its points nor lines between
/// them are drawn.
bool IsShownThroughCurve(const TSeries& series);

/// The points of a DataSet that are picked from: those of its regression curve where it is shown through that alone.
const PointChain& PickablePoints(const TSeries& series);

/// The one of them at a 0-based position below their number.
PickedPoint PickedPointAt(const TSeries& series, std::size_t index);

/// The 0-based position of the point nearest to `x` (a tie goes to the left); nothing when the chain is empty or x NaN.
std::optional<std::size_t> NearestIndex(const PointChain& points, double x);

/// The point of the current DataSet nearest to the data value `x`. Nothing without a current DataSet with points, or when
/// `x` is outside the X axis' range. O(log n).
std::optional<PickedPoint> PickPoint(const TxyGraph& graph, double x);

/// The same for any DataSet of the graph.
std::optional<PickedPoint> PickPointOf(const TxyGraph& graph, const TSeries& series, double x);

}  // namespace tarnwick
