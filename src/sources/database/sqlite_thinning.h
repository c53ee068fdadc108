// The rows of a view picked from an SQLite file, which lies in this process: they are gone through, on as many threads as help,
// by an index of X where there is one.
#pragma once

#include "sources/database/thinned_pieces.h"

namespace tarnwick {

/// As FetchThinnedInPieces().
ThinnedRows FetchThinnedOfSqlite(const ThinnedView& view, ThinnedSoFar& so_far,
                                 const ThinnedTaker& take, Progress& progress);

}  // namespace tarnwick
