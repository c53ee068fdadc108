// The drawn values of a DataSet's points and their extremes over runs of points. Knows chunks and base line; no pixels.
#pragma once

#include <cstddef>

#include "data/points/point_chain.h"

namespace tarnwick {

struct ThinningView;

/// Extremes of drawn values; `gaps` when some value has no place in the picture (min and max then say nothing).
struct ValueRange {
  double min = 0;
  double max = 0;
  bool gaps = false;
};

class ValueScan {
 public:
  explicit ValueScan(const ThinningView& view);

  /// The drawn value of the chunk's i-th point.
  double At(const ChunkView& chunk, std::size_t i) const {
    const double stored = !regression_               ? chunk.y[i]
                          : chunk.regression.empty() ? 0
                                                     : chunk.regression[i];
    return stored - zero_value_ - (slope_ == 0 ? 0 : slope_ * chunk.x[i]);
  }
  bool HasPlace(double value) const { return log_ ? value > 0 : value == value; }
  /// Over the points begin <= i < end, of which there is at least one.
  ValueRange Scan(const ChunkView& chunk, std::size_t begin, std::size_t end) const {
    return plain_ ? Placed(chunk.Extremes(begin, end)) : Read(chunk, begin, end);
  }
  /// The range of a whole chunk by the extremes kept with it. False when they do not tell: a sloping base line, regression
  /// values, gaps.
  bool FromExtremes(const PointChain& points, std::size_t number, ValueRange& range) const;

 private:
  // The range of drawn values whose stored ones reach that far.
  ValueRange Placed(const YExtremes& stored) const {
    ValueRange range{stored.min - zero_value_, stored.max - zero_value_, stored.gaps};
    if (log_ ? !(range.min > 0) : !(range.min <= range.max)) range.gaps = true;
    return range;
  }
  ValueRange Read(const ChunkView& chunk, std::size_t begin, std::size_t end) const;

  double zero_value_ = 0;
  double slope_ = 0;
  bool plain_ = true;  // stored Y less a constant is what is drawn
  bool regression_ = false;
  bool log_ = false;
};

}  // namespace tarnwick
