// Merging many points into a chain in one sweep, with the result of placing them one by one. Knows the placing rules for a
// tolerance of 0; knows no DataSet.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {

/// What became of the points of a batch.
struct BatchOutcome {
  std::int32_t last_id = 0;  ///< the last id given out
  std::vector<std::uint8_t>
      made_point;  ///< for each value: 1 where it made a new point, 0 where it overwrote one
};

/// Merges points, none with an undefined X, into the chain; new points get the ids last_id + 1, … in the order of the batch.
/// Where duplicates are forbidden an equal X overwrites, and no two points of the chain may have the same X.
BatchOutcome MergeBatch(PointChain& chain, std::span<const double> x, std::span<const double> y,
                        Duplicates duplicates, std::int32_t last_id);

}  // namespace tarnwick
