// The points of a chain in the order in which they came, which is that of their ids. Knows chains and gaps; no DataSet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "data/points/point_chain.h"
#include "data/points/point_gaps.h"

namespace tarnwick {

/// True when the chain's own order is that of the ids. Quick where points were only appended.
bool IdsAscend(const PointChain& points);

/// The index of every point in the chain, in the order of the ids.
std::vector<std::uint32_t> ArrivalOrder(const PointChain& points);

/// Whether `order` names every index below `points` once.
bool IsOrderOf(std::span<const std::uint32_t> order, std::size_t points);

/// The chain's points with the ids 1, 2, … given in that order; the regression values are dropped.
PointChain WithOrder(const PointChain& points, std::span<const std::uint32_t> order);

/// The indices of the points before which a line along the chain is broken, ascending: there another piece begins.
std::vector<std::size_t> BreaksAlongChain(const PointChain& points, const PointGaps& gaps);

/// The same for a line in the order of arrival: places in `order`, which is ArrivalOrder(points).
std::vector<std::size_t> BreaksInOrder(const PointChain& points,
                                       std::span<const std::uint32_t> order, const PointGaps& gaps);

}  // namespace tarnwick
