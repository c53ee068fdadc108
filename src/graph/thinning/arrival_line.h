// The points of a DataSet in the order in which they came, made ready for drawing a line through them again and again. Knows
// values; no pixels and no DataSet.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "data/points/point_chain.h"
#include "data/points/point_gaps.h"
#include "graph/thinning/kept_cover.h"

namespace tarnwick {

/// The extent of some points that follow one another.
struct ArrivalBox {
  double x_min = 0, x_max = 0, y_min = 0, y_max = 0;
  bool whole = true;  ///< every Y is a number and the line is not broken inside

  void Include(const ArrivalBox& other);
};

class ArrivalLine {
 public:
  static constexpr std::size_t
      kSmall = 16,
      kMiddle = 64,
      kLarge = 256;  ///< points a box: few are read where the line enters a column

  ArrivalLine(const PointChain& points, const PointGaps& gaps);

  std::span<const double> X() const { return x_; }
  std::span<const double> Y() const { return y_; }  ///< as stored
  /// The line is broken before these points; ascending.
  std::span<const std::size_t> Breaks() const { return breaks_; }
  /// Of each kSmall (kMiddle, kLarge) points in turn; the last ones may have fewer.
  std::span<const ArrivalBox> SmallBoxes() const { return small_; }
  std::span<const ArrivalBox> MiddleBoxes() const { return middle_; }
  std::span<const ArrivalBox> LargeBoxes() const { return large_; }

 private:
  std::vector<double> x_, y_;
  std::vector<std::size_t> breaks_;
  std::vector<ArrivalBox> small_, middle_, large_;
};

/// How a line goes through the points of a chain.
struct LinePath {
  std::vector<std::size_t> breaks;  ///< along the chain
  std::unique_ptr<ArrivalLine>
      arrivals;             ///< given: it goes this way instead, with the breaks of its own
  mutable KeptCover cover;  ///< of that way, while points and gaps stay as they are
};

}  // namespace tarnwick
