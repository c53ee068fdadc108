// The rows of a view picked from an SQLite file, which lies in this process: they are gone through, on as many threads as help,
// by an index of X where there is one.
#pragma once

#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned().
ThinnedRows FetchThinnedOfSqlite(const ThinnedView& view, Progress& progress);

}  // namespace tarnwick
