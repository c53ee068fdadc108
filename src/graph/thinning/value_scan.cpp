#include "graph/thinning/value_scan.h"

#include <algorithm>
#include <limits>

#include "graph/thinning/thinning.h"

namespace tarnwick {

namespace {

constexpr std::size_t kLanes = 8;

// Independent lanes of plain comparisons, so that the compiler can run them side by side. A comparison with NaN is false,
// therefore the extremes leave NaN out; a lane's flag tells of it.
template <class ValueAt>
ValueRange RangeOf(std::size_t begin, std::size_t end, const ValueAt& value_at) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double min[kLanes], max[kLanes], check[kLanes];
  std::fill(min, min + kLanes, kInfinity);
  std::fill(max, max + kLanes, -kInfinity);
  std::fill(check, check + kLanes, 0.0);
  std::size_t i = begin;
  for (; i + kLanes <= end; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const double value = value_at(i + lane);
      min[lane] = value < min[lane] ? value : min[lane];
      max[lane] = value > max[lane] ? value : max[lane];
      check[lane] = value == value ? check[lane] : 1.0;
    }
  }
  for (; i < end; ++i) {
    const double value = value_at(i);
    min[0] = value < min[0] ? value : min[0];
    max[0] = value > max[0] ? value : max[0];
    check[0] = value == value ? check[0] : 1.0;
  }
  return {*std::min_element(min, min + kLanes), *std::max_element(max, max + kLanes),
          *std::max_element(check, check + kLanes) != 0};
}

}  // namespace

ValueScan::ValueScan(const ThinningView& view)
    : zero_value_(view.zero_value),
      slope_(view.base_line_slope),
      plain_(view.ordinate == Ordinate::Y && slope_ == 0),
      regression_(view.ordinate == Ordinate::Regression),
      log_(view.y.Log()) {}

ValueRange ValueScan::Read(const ChunkView& chunk, std::size_t begin, std::size_t end) const {
  ValueRange range;
  if (regression_ && chunk.regression.empty()) {
    range = RangeOf(begin, end, [&](std::size_t i) { return At(chunk, i); });
  } else {
    const std::span<const double> values = regression_ ? chunk.regression : chunk.y;
    if (slope_ == 0) return Placed(ExtremesOf(values.subspan(begin, end - begin)));
    const double* const x = chunk.x.data();
    range = RangeOf(begin, end, [values, x, zero = zero_value_, slope = slope_](std::size_t i) {
      return values[i] - zero - slope * x[i];
    });
  }
  if (log_ ? !(range.min > 0) : !(range.min <= range.max)) range.gaps = true;
  return range;
}

bool ValueScan::FromExtremes(const PointChain& points, std::size_t number,
                             ValueRange& range) const {
  if (!plain_) return false;
  range = Placed(points.ChunkExtremes(number));
  return !range.gaps;
}

}  // namespace tarnwick
