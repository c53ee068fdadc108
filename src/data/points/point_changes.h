// What became of points between two states of a chain, found by their ids. Knows chains; knows no DataSet and no step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {

enum class PointFate : std::uint8_t {
  Changed,  ///< another Y
  Moved,    ///< another X
  Removed,
  Added
};

/// One point that differs. `was` is missing of an added one, `now` of a removed one.
struct PointChange {
  PointFate fate = PointFate::Changed;
  std::optional<Point> was;
  std::optional<Point> now;

  std::int32_t Id() const { return was ? was->id : now->id; }
  double X() const { return was ? was->x : now->x; }
};

/// What differs, by X; nothing when points in question are more than `most`. Costs what the chains do not share. Values of
/// regressions do not count.
std::optional<std::vector<PointChange>> ChangesBetween(const PointChain& was, const PointChain& now,
                                                       std::size_t most);

}  // namespace tarnwick
