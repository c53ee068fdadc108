// The rows of a view picked by a PostgreSQL server, in one query.
#pragma once

#include "sources/database/database_connection.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned(), over a connection to the view's place.
ThinnedRows FetchThinnedOfPostgres(const ThinnedView& view, const DatabaseConnection& connection,
                                   Progress& progress);

}  // namespace tarnwick
