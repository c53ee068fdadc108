// A few rows of each part of a table of SQLite, found without going through the others.
#pragma once

#include <optional>

#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As CoarseRows() and FetchCoarse().
std::optional<std::int64_t> CoarseRowsOfSqlite(const ThinnedView& view, Progress& progress);
std::optional<ThinnedRows> FetchCoarseOfSqlite(const ThinnedView& view, Progress& progress);

}  // namespace tarnwick
