// The columns of a chain, copied out of its chunks: for sorting, fitting, comparing. Whoever only reads once asks the chunks.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {

std::vector<double> XValues(const PointChain& points);
std::vector<double> YValues(const PointChain& points);  ///< as stored
std::vector<std::int32_t> Ids(const PointChain& points);

/// The index of the point with that id. Quick where ids rise with X, as they do in imported DataSets.
std::optional<std::size_t> IndexOfId(const PointChain& points, std::int32_t id);

}  // namespace tarnwick
