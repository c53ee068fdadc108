// How far the rows of a view were gone through, piece by piece. Knows no kind of data base.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/progress.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {

/// Kept by who asks, so that a question that was given up goes on where it was. A plain one was not begun.
struct ThinnedSoFar {
  std::optional<ThinnedColumns> columns;  ///< of the pieces that are done
  std::vector<std::string> left;          ///< the others, as the data base names them
  std::size_t pieces = 0;                 ///< in all
  double x_min = 0, x_max = 0;            ///< rows beside count for nothing

  double Share() const {
    return pieces == 0 ? 0 : 1 - static_cast<double>(left.size()) / static_cast<double>(pieces);
  }
};

/// Told now and then what is there, in the thread that asked: the rows of the pieces that are done, and their share of all.
using ThinnedTaker = std::function<void(const ThinnedRows& rows, double share)>;

/// As FetchThinned(), in pieces of the table where it can be cut, else at once. What is done when it throws is in `so_far`.
ThinnedRows FetchThinnedInPieces(const ThinnedView& view, ThinnedSoFar& so_far,
                                 const ThinnedTaker& take, Progress& progress);

}  // namespace tarnwick
