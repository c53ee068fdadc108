// How often a curve turns from rising to falling and back. Knows numbers; no points and no model.
#pragma once

#include <span>

namespace tarnwick {

/// How often a curve, given at even distances, turns from one of them to the next, from its first turn to its last: 2 by its
/// period, in these distances. Ways back of less than a fiftieth of its range are no turns. 0 where there are fewer than four,
/// and where the curve has no value somewhere.
double TurnsPerDistance(std::span<const double> curve);

}  // namespace tarnwick
