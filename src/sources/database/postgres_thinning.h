// The rows of a view picked by a PostgreSQL server, in one query.
#pragma once

#include <optional>

#include "sources/database/database_connection.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned(), over a connection to the view's place.
ThinnedRows FetchThinnedOfPostgres(const ThinnedView& view, const DatabaseConnection& connection,
                                   Progress& progress);

/// As CoarseRows() and FetchCoarse(), where an index finds X.
std::optional<std::int64_t> CoarseRowsOfPostgres(const ThinnedView& view,
                                                 const DatabaseConnection& connection,
                                                 Progress& progress);
std::optional<ThinnedRows> FetchCoarseOfPostgres(const ThinnedView& view,
                                                 const DatabaseConnection& connection,
                                                 Progress& progress);

}  // namespace tarnwick
