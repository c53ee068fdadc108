// The bars that show the errors of a DataSet's points, made ready for drawing again and again. Knows points and errors; no pixels
// and no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "data/points/point_chain.h"
#include "data/series/extremes.h"
#include "data/series/point_errors.h"

namespace tarnwick {

/// A bar's ends in values, Y as stored; NaN for a point that has none.
struct BarEnds {
  double low = kUndefined;
  double high = kUndefined;

  bool Exist() const { return low <= high; }
};

class ErrorBars {
 public:
  static constexpr std::size_t kBox = 64;  ///< bars whose extent is kept

  ErrorBars(const PointChain& points, const PointErrors& errors);

  /// Of the points along the chain; empty where no rule gives errors of Y (X).
  std::span<const BarEnds> Y() const { return y_; }
  std::span<const BarEnds> X() const { return x_; }
  /// The extent of each kBox of them in turn; the last ones may be fewer.
  std::span<const BarEnds> YBoxes() const { return y_boxes_; }
  std::span<const BarEnds> XBoxes() const { return x_boxes_; }
  /// What all bars of a box of X have in common; none where a point has no bar.
  std::span<const BarEnds> XCores() const { return x_cores_; }

 private:
  std::vector<BarEnds> y_, x_, y_boxes_, x_boxes_, x_cores_;
};

/// Whether values have a place on the axis that are not above 0.
enum class AxisKind { Linear, Logarithmic };

/// The extremes of points (corrected Y) and widened by their bars. On a logarithmic axis a bar counts no further than a tenth of
/// the smallest extreme: it may run off the plot.
Extremes WithBars(const Extremes& extremes, const ErrorBars& bars, const PointChain& points,
                  const BaseLine& line, AxisKind x, AxisKind y);

}  // namespace tarnwick
