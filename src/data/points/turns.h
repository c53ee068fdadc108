// Where X turns back along points that are taken in the order in which they came: what parts a loop, or a sweep to and fro, into
// branches along each of which X goes one way. Mathematics over spans; knows no chain and no DataSet.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tarnwick {

/// Going back no further than this is jitter: a share of the range of X without the few points far out, beside which all others
/// seem to stand still. `sorted_x`: ascending, one value at least.
double JitterOf(std::span<const double> sorted_x);

/// Of each place at which X turns back by more than `jitter`, the first point behind the turn. `breaks`: places at which the line
/// is broken, ascending; across them X may do what it likes.
std::vector<std::size_t> TurnsOf(std::span<const double> x, std::span<const std::size_t> breaks,
                                 double jitter);

}  // namespace tarnwick
