// Thins a line of points to what a picture can show: per pixel column the first, lowest, highest and last point, which gives
// the same picture as all points. Pure arithmetic over a point chain; knows no painter, pen or DataSet.
//
// Method: per-column first/min/max/last aggregation (Jugel, Jerzak, Hackenbroich, Markl, "M4: a visualization-oriented time
// series data aggregation", PVLDB 7 (2014) 797). Chunks that fall wholly into one column are answered by the extremes kept with
// them, so that after the first time the cost grows with the columns, not with the points.
#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "base/double_pair.h"
#include "data/points/point_chain.h"
#include "graph/axes/axis_scale.h"

namespace tarnwick {

/// Value <-> device pixel along one axis, without rounding. Far away positions are held within +-kFarPixel, so that every
/// finite or infinite value gives a usable coordinate; NaN stays NaN, as does a value <= 0 on a logarithmic axis.
class PixelMap {
 public:
  static constexpr double kFarPixel = 1e7;

  PixelMap() = default;
  /// The axis' pixels times `factor` plus `offset` are device pixels.
  PixelMap(const AxisScale& scale, double factor, double offset);

  double At(double value) const {
    double pixel = Unheld(value);
    pixel = -kFarPixel > pixel ? -kFarPixel : pixel;
    return kFarPixel < pixel ? kFarPixel : pixel;
  }
  /// The same for two values.
  DoublePair At(DoublePair values) const {
    constexpr DoublePair kFar{kFarPixel, kFarPixel};
    if (log_) values = DoublePair{LogOf(values[0]), LogOf(values[1])};
    DoublePair pixels = UnheldLinear(values);
    pixels = -kFar > pixels ? -kFar : pixels;
    return kFar < pixels ? kFar : pixels;
  }
  /// The same without holding far away positions.
  double Unheld(double value) const { return UnheldLinear(log_ ? LogOf(value) : value); }
  /// The same on a linear axis, for a number or a vector of them.
  template <class Value>
  Value UnheldLinear(Value value) const {
    // The difference of two huge values may overflow; an infinity lands on the right side all the same.
    return origin_ + (value - reference_) * magnifier_ * slope_;
  }
  /// The same places in pixels so many times as fine.
  PixelMap Finer(double factor) const {
    PixelMap finer = *this;
    finer.origin_ *= factor;
    finer.slope_ *= factor;
    return finer;
  }
  double ValueAt(double pixel) const {
    const double value = reference_ + (pixel - origin_) / slope_ / magnifier_;
    return log_ ? std::exp(value) : value;
  }
  bool Log() const { return log_; }
  /// False when the axis has no extent or is not finite: nothing can be drawn against it.
  bool Usable() const;
  bool Rising() const { return slope_ > 0; }

 private:
  static double LogOf(double value);

  double reference_ = 0;  // value (its logarithm on a logarithmic axis) at pixel origin_
  double origin_ = 0;
  double slope_ = 1;      // pixels per magnified unit
  double magnifier_ = 1;  // a power of two, above 1 where pixels per unit exceed the doubles
  bool log_ = false;
};

/// Which of a point's values is drawn; either is corrected by the base line.
enum class Ordinate { Y, Regression };

/// What is drawn where.
struct ThinningView {
  PixelMap x;  ///< must rise with the value
  PixelMap y;
  Ordinate ordinate = Ordinate::Y;
  double zero_value = 0;  ///< the base line at abscissa X is zero_value + base_line_slope X
  double base_line_slope = 0;
  int first_column = 0;  ///< device pixel columns that are seen
  int last_column = 0;   ///< included
};

struct PixelPoint {
  double x = 0;
  double y = 0;
};

/// All points of one pixel column without a gap between them.
struct PixelColumn {
  int column = 0;
  PixelPoint first, last;
  double top = 0;     ///< smallest pixel Y
  double bottom = 0;  ///< largest pixel Y
};

/// A stretch of the line: a polyline over `points`, or neighbouring columns (each one right of the one before) over `columns`.
/// Stretches of one line overlap in their end points, so that each can be drawn by itself.
struct LinePart {
  enum class Kind { Polyline, Columns };
  Kind kind = Kind::Polyline;
  std::size_t begin = 0;
  std::size_t end = 0;
};

struct ThinnedLine {
  std::vector<PixelPoint> points;
  std::vector<PixelColumn> columns;
  std::vector<LinePart> parts;  ///< in drawing order; a gap in the data ends a part
};

/// The line as far as it is seen, with the neighbours just outside the view. Points that have no place (NaN, or not above 0 on
/// a logarithmic axis) break it, and so does the way to each of the points `breaks`, given by ascending indices. Where there are
/// fewer than two points a column every point is kept.
ThinnedLine ThinLine(const PointChain& points, const ThinningView& view,
                     std::span<const std::size_t> breaks = {});

}  // namespace tarnwick
