// The rows of a view picked by a server of MySQL or MariaDB, in one query.
#pragma once

#include "sources/database/database_connection.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned(), over a connection to the view's place.
ThinnedRows FetchThinnedOfMysql(const ThinnedView& view, const DatabaseConnection& connection,
                                Progress& progress);

}  // namespace tarnwick
