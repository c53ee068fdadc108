// The way of a line through the points of a chain: in which order it joins them, where it is broken, and the pieces and branches
// along which X goes one way. Knows chains; no DataSet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {

struct LineWay {
  /// The index of every point in the chain, as the line goes; empty where that is the chain's own order.
  std::vector<std::uint32_t> order;
  /// Places along the line before which it is broken, ascending, each above 0.
  std::vector<std::size_t> breaks;

  /// In order of X, without a gap.
  bool IsPlain() const { return order.empty() && breaks.empty(); }
  std::size_t IndexAt(std::size_t place) const { return order.empty() ? place : order[place]; }
};

/// The points that follow one another along the line: the places from `begin` to before `end`.
struct LinePiece {
  std::size_t begin = 0;
  std::size_t end = 0;

  std::size_t Size() const { return end - begin; }
};

/// The points as the line joins them, and their X.
std::vector<Point> PointsAlong(const PointChain& points, const LineWay& way);
std::vector<double> XAlong(const PointChain& points, const LineWay& way);

/// The line of so many points cut where it is broken.
std::vector<LinePiece> PiecesOf(const LineWay& way, std::size_t points);

/// The line cut where X turns back (TurnsOf), and where it is broken. The point at a turn ends a branch; a line in order of X has
/// no turns.
std::vector<LinePiece> BranchesOf(const LineWay& way, const PointChain& points);

}  // namespace tarnwick
